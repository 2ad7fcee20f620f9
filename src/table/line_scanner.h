// The fast paths of the CSV reader and writer: cutting text into lines,
// splitting a line into a reusable scratch and appending a joined record to a
// buffer. They follow SplitDelimited and JoinDelimited exactly; those stay the
// plain reference versions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "table/delimited_text.h"
#include "table/record.h"

namespace qm {

// Walks text line by line: a line ends at CR LF, a lone CR or a lone LF (LF
// CR is two breaks); a break at the very end adds no empty line; a character
// 0 ends the text.
class TextLineCursor {
 public:
  TextLineCursor() = default;
  TextLineCursor(const char16_t* begin, const char16_t* end) : p_(begin), end_(end) {}
  explicit TextLineCursor(std::u16string_view text) : TextLineCursor(text.data(), text.data() + text.size()) {}

  // The next line; false when the text is used up.
  bool Next(std::u16string_view& line);
  // True once a character 0 has ended the text.
  bool EndedByNul() const noexcept { return nul_; }

 private:
  const char16_t* p_ = nullptr;
  const char16_t* end_ = nullptr;
  bool nul_ = false;
};

// Splits `line` as SplitDelimited does, writing the cells back to back into
// `text` and their end offsets into `ends`. `text` needs room for line.size()
// units and `ends` for line.size() + 1 entries. Returns the number of cells.
size_t SplitLineInto(std::u16string_view line, const TextFormat& format, char16_t* text, uint32_t* ends);

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
// the number of cells. Each call with the same text, format and `end`
// passes the same `look`.
size_t SplitUtf8Line(const char* bytes, const char* end, const TextFormat& format, char16_t* text, uint32_t* ends,
                     const char*& stop, Utf8LookAhead& look);

// Appends the record joined as JoinDelimited joins it.
void AppendJoinedRecord(const Record& record, const TextFormat& format, std::u16string& out);
// The same written to `out`, which needs room for JoinedRecordMaxUnits units:
// the joined record and up to kJoinOverrun units that the writer may store
// past its end and leaves for what follows to overwrite. Returns one past the
// last unit of the record.
inline constexpr size_t kJoinOverrun = 16;
size_t JoinedRecordMaxUnits(const Record& record);
char16_t* WriteJoinedRecord(const Record& record, const TextFormat& format, char16_t* out);

}  // namespace qm
