// Joining a record's cells into one line, exactly as JoinDelimited joins
// them (which stays the plain reference): into UTF-16 text, or into a
// file's bytes, the line break after it, in the file's encoding.
#pragma once

#include <cstddef>
#include <string>

#include "core/delimited_text.h"
#include "table/raw_buffer.h"
#include "table/record.h"
#include "table/text_encoding.h"

namespace qm {

// Appends the record joined.
void AppendJoinedRecord(const Record& record, const TextFormat& format, std::u16string& out);
// The same written to `out`, which needs room for JoinedRecordMaxUnits units:
// the joined record and up to kJoinOverrun units that the join may store past
// its end and leaves for what follows to overwrite. Returns one past the last
// unit of the record.
inline constexpr size_t kJoinOverrun = 16;
size_t JoinedRecordMaxUnits(const Record& record);
char16_t* WriteJoinedRecord(const Record& record, const TextFormat& format, char16_t* out);

// Joins records into the lines of a file in `encoding`, each followed by
// CR LF. Where text below U+0080 is written as those very bytes (UTF-8 and
// the code pages), a record kept one byte a character is joined straight
// into them: to UTF-8, or as bytes for a code page, where the join is the
// whole work unless the line holds characters from U+0080 on. Every other
// line is joined in UTF-16 and encoded.
class FileLineJoiner {
 public:
  FileLineJoiner(const TextFormat& format, TextEncoding encoding);

  // The most bytes one record's line can take, its line break included.
  size_t MaxBytes(const Record& record) const;
  // Writes the record's line and line break at `out`; returns the bytes.
  size_t Join(const Record& record, char* out);

 private:
  TextFormat format_;
  TextEncoding encoding_;
  bool asciiAsIs_;
  RawBuffer<char16_t> units_;
};

}  // namespace qm
