// The lines of a CSV file, read and decoded piece by piece while the table
// is built, so the whole decoded text never sits in memory beside it.
#pragma once

#include <cstddef>
#include <string_view>

#include "core/text_lines.h"
#include "platform/file_system.h"
#include "table/csv_line_source.h"
#include "table/raw_buffer.h"
#include "table/text_encoding.h"
#include "table/utf8_line_splitter.h"

namespace qm {

// Reads a file piece by piece and cuts each piece into lines. Pieces end
// right after a line break, so no line and no CR LF pair spans two pieces
// and each piece decodes on its own: in every supported encoding a line
// break is one unit that never occurs inside a multi-byte character or a
// UTF-7 shifted run. UTF-8 in a strict format is split straight from the
// bytes; everything else is decoded a piece at a time first.
class FileLines final : public CsvLineSource {
 public:
  FileLines(FileReader& reader, TextEncoding encoding, const TextFormat& format)
      : reader_(reader),
        encoding_(encoding),
        unitBytes_(encoding == TextEncoding::Unicode ? 2 : 1),
        direct_(encoding == TextEncoding::UTF8 && Utf8LineSplitter::Handles(format)),
        utf8_(format) {}

  bool Next(std::u16string_view& line) override;

  bool NextData(const SkipRules& rules, LineSplitter& splitter, size_t minCells, bool& skipped, size_t& count) override;

  size_t LineCountHint() const override { return hint_; }

 private:
  size_t StepOverBreak(const char* stop, const char* end) const;

  // The skip rules on the line at `line`, still in UTF-8 (it ends at CR, LF,
  // a byte 0 or `end`): a blank line has bytes of 1 to 32 only; the comment
  // prefix is compared with the line's decoded start.
  bool SkipsBytes(const SkipRules& rules, const char* line, const char* end);

  // The next line decoded on its own (UTF-8 read straight from the bytes).
  bool NextRawLine(std::u16string_view& line);

  // One past the last line break that is safe to cut after, or 0.
  size_t FindCut(const char* bytes, size_t count) const;

  size_t CountBreaks(const char* bytes, size_t count) const;
  // One past the first character 0 of the units in `bytes`, or 0.
  size_t FindNul(const char* bytes, size_t count) const;

  void LoadPiece();

  FileReader& reader_;
  TextEncoding encoding_;
  size_t unitBytes_;
  bool direct_;
  RawBuffer<char> bytes_;
  size_t held_ = 0;      // bytes read, from the buffer's start
  size_t consumed_ = 0;  // bytes of the current piece, dropped at the next load
  size_t pos_ = 0;       // direct reading: the next line's first byte
  size_t pieceEnd_ = 0;
  Utf8LineSplitter utf8_;         // direct reading: restarted at every piece
  RawBuffer<char16_t> text_;      // decoded piece
  RawBuffer<char16_t> lineText_;  // one decoded line
  TextLineCursor cursor_;
  bool first_ = true;
  bool finished_ = false;
  bool ended_ = false;  // a character 0 ended the text
  size_t hint_ = 0;
};

}  // namespace qm
