// The fast paths of the CSV reader and writer: splitting a line into a
// reusable scratch and appending a joined record to a buffer. They follow SplitDelimited and JoinDelimited exactly; those stay the
// plain reference versions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/delimited_text.h"
#include "table/record.h"

namespace qm {

// Splits `line` as SplitDelimited does, writing the cells back to back into
// `text` and their end offsets into `ends`. `text` needs room for line.size()
// units and `ends` for line.size() + 1 entries. Returns the number of cells.
// With `dropRead` the line is scratch: the pages of its text already split
// are given back on the way and hold anything afterwards.
size_t SplitLineInto(std::u16string_view line, const TextFormat& format, char16_t* text, uint32_t* ends,
                     bool dropRead = false);

// True when SplitUtf8Line can split lines in this format: strict, with a
// delimiter and quote character (or none) below 0x80 that are no line break.
bool CanSplitUtf8(const TextFormat& format);

// What SplitUtf8Line last saw of 64 bytes of text, kept for the next line,
// which mostly starts among them. Start with an empty one, and empty it
// whenever the text moves or changes.
struct Utf8LookAhead {
  const char* base = nullptr;
  uint64_t delimiter = 0;  // one bit a byte
  uint64_t other = 0;
};

// Splits the line that starts at `bytes` straight from UTF-8, as decoding
// the bytes and then SplitLineInto would. The line ends at CR, LF, a byte 0
// or `end`; `stop` is set to that place. `text` needs room for
// (end - bytes) + 16 units and `ends` for (end - bytes) + 2 entries. Returns
// the number of cells, and sets `oneByte` when every character of the cells
// lies below U+0100. Each call with the same text, format and `end`
// passes the same `look`. With `dropRead` the pages of the line's bytes
// already split are given back on the way, so a line of hundreds of
// megabytes and its cells never sit in memory whole side by side; those
// bytes are undefined afterwards.
size_t SplitUtf8Line(const char* bytes, const char* end, const TextFormat& format, char16_t* text, uint32_t* ends,
                     const char*& stop, Utf8LookAhead& look, bool& oneByte, bool dropRead = false);
// The same into one byte a character, for the many lines whose characters
// all lie below U+0100: `text` needs room for (end - bytes) + 16 bytes. On
// the first other character it gives up and returns kNotOneByte, its
// output undefined; the line is then split again by SplitUtf8Line.
inline constexpr size_t kNotOneByte = ~size_t{0};
size_t SplitUtf8LineOneByte(const char* bytes, const char* end, const TextFormat& format, uint8_t* text,
                            uint32_t* ends, const char*& stop, Utf8LookAhead& look);

// Appends the record joined as JoinDelimited joins it.
void AppendJoinedRecord(const Record& record, const TextFormat& format, std::u16string& out);
// The same written to `out`, which needs room for JoinedRecordMaxUnits units:
// the joined record and up to kJoinOverrun units that the writer may store
// past its end and leaves for what follows to overwrite. Returns one past the
// last unit of the record.
inline constexpr size_t kJoinOverrun = 16;
size_t JoinedRecordMaxUnits(const Record& record);
char16_t* WriteJoinedRecord(const Record& record, const TextFormat& format, char16_t* out);
// Whether the record is kept one byte a character and the format's delimiter
// and quote character lie below `below`: 0x100 for WriteJoinedBytes, 0x80
// for WriteJoinedUtf8.
bool CanJoinAsBytes(const Record& record, const TextFormat& format, char16_t below);
// The same joined as one byte a character (each the character's code), with
// room for JoinedRecordMaxUnits bytes at `out`.
uint8_t* WriteJoinedBytes(const Record& record, const TextFormat& format, uint8_t* out);
// The same joined in UTF-8, with room for twice JoinedRecordMaxUnits bytes.
char8_t* WriteJoinedUtf8(const Record& record, const TextFormat& format, char8_t* out);

}  // namespace qm
