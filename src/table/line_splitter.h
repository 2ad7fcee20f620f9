// Splitting a line into cells, exactly as SplitDelimited does (which stays
// the plain reference), into a scratch that is reused for every line, and
// making a record of the cells. UTF-8 lines can also be split straight from
// their bytes (utf8_line_splitter.h).
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "core/delimited_text.h"
#include "table/raw_buffer.h"
#include "table/record.h"

namespace qm {

// Splits `line`, writing the cells back to back into `text` and their end
// offsets into `ends`. `text` needs room for line.size() units and `ends`
// for line.size() + 1 entries. Returns the number of cells. With `dropRead`
// the line is scratch: the pages of its text already split are given back on
// the way and hold anything afterwards.
size_t SplitLineInto(std::u16string_view line, const TextFormat& format, char16_t* text, uint32_t* ends,
                     bool dropRead = false);

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

}  // namespace qm
