// The reader's view of CSV text: one line at a time from a line list, a
// text or a file, with the rules that skip lines and the scratch that
// splits a line into cells.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/delimited_text.h"
#include "core/text_lines.h"
#include "table/line_scanner.h"
#include "table/raw_buffer.h"
#include "table/record.h"

namespace qm {

// The reader's skip rules for blank and comment lines.
struct SkipRules {
  bool blank = false;
  std::u16string_view comment;  // empty: comments are not skipped

  bool Skips(std::u16string_view line) const;
};

// Splits lines into a scratch that is reused for every line.
class LineSplitter {
 public:
  explicit LineSplitter(const TextFormat& format) : format_(format) {}

  // Splits the line; its cells are then Cell(0) to Cell(count - 1). With
  // `dropLine` the line is scratch that the split may give back.
  size_t Split(std::u16string_view line, size_t minimumCells, bool dropLine = false) {
    char16_t* text = text_.Reserve(line.size() + 1);
    uint32_t* ends = ends_.Reserve(std::max(line.size() + 1, minimumCells));
    width_ = Record::Width::Unknown;
    inBytes_ = false;
    return SplitLineInto(line, format_, text, ends, dropLine);
  }
  // A record of the last split in `arena`, padded with empty cells to
  // `fieldCount`. The split is used up: a large one's scratch is given back.
  Record MakeRecord(size_t count, size_t fieldCount, RecordArena& arena) {
    uint32_t* ends = ends_.data();
    const uint32_t length = count ? ends[count - 1] : 0;
    for (; count < fieldCount; ++count) ends[count] = length;
    return Record::InArena(arena, Text(length), std::span<const uint32_t>(ends, count), true, width_);
  }
  // The same on the heap, unpadded (a header line's names).
  Record MakeHeapRecord(size_t count) {
    const uint32_t length = count ? ends_.data()[count - 1] : 0;
    return Record(Text(length), std::span<const uint32_t>(ends_.data(), count), true);
  }
  // Room for a split done elsewhere in UTF-16, which then tells whether all
  // its characters lie below U+0100.
  char16_t* TextRoom(size_t units) { return text_.Reserve(units); }
  void SetOneByte(bool oneByte) {
    width_ = oneByte ? Record::Width::OneByte : Record::Width::Wide;
    inBytes_ = false;
  }
  // Room for a split done elsewhere one byte a character, and the word that
  // it is done.
  uint8_t* ByteRoom(size_t bytes) { return bytes_.Reserve(bytes); }
  void SetInBytes() {
    width_ = Record::Width::OneByte;
    inBytes_ = true;
  }
  uint32_t* EndsRoom(size_t count) { return ends_.Reserve(count); }
  const TextFormat& Format() const noexcept { return format_; }

 private:
  CellText Text(uint32_t length) const noexcept {
    return inBytes_ ? CellText::Narrow(bytes_.data(), length) : CellText(std::u16string_view(text_.data(), length));
  }

  TextFormat format_;
  RawBuffer<char16_t> text_;
  RawBuffer<uint8_t> bytes_;
  RawBuffer<uint32_t> ends_;
  Record::Width width_ = Record::Width::Unknown;
  bool inBytes_ = false;  // the last split is in bytes_, else in text_
};

// Hands the reader one line at a time.
class CsvLineSource {
 public:
  virtual ~CsvLineSource() = default;
  // The next raw line; false at the end of the text. The view stays valid
  // until the next call.
  virtual bool Next(std::u16string_view& line) = 0;
  // The next line: `skipped` when the rules drop it, else split into
  // `splitter` with `count` cells. False at the end of the text.
  virtual bool NextData(const SkipRules& rules, LineSplitter& splitter, size_t minCells, bool& skipped,
                        size_t& count);
  // About how many lines there are, for pre-sizing the record list.
  virtual size_t LineCountHint() const = 0;
};

// The lines of a list, each taken whole.
class ListLines final : public CsvLineSource {
 public:
  explicit ListLines(const std::vector<std::u16string>& lines) : lines_(lines) {}
  bool Next(std::u16string_view& line) override;
  size_t LineCountHint() const override { return lines_.size(); }

 private:
  const std::vector<std::u16string>& lines_;
  size_t next_ = 0;
};

// The lines of a text (CR LF, CR or LF; a character 0 ends it).
class TextLines final : public CsvLineSource {
 public:
  explicit TextLines(std::u16string_view text);
  bool Next(std::u16string_view& line) override { return cursor_.Next(line); }
  size_t LineCountHint() const override { return hint_; }

 private:
  TextLineCursor cursor_;
  size_t hint_;
};

}  // namespace qm
