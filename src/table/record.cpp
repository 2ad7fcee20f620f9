#include "table/record.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

#include "core/simd_copy.h"
#include "core/errors.h"
#include "platform/large_blocks.h"
#include "table/record_arena.h"

namespace qm {

Record::Block* Record::Allocate(const Shape& shape, RecordArena* arena) {
  auto* block = static_cast<Block*>(arena ? arena->Allocate(shape.Bytes()) : std::malloc(shape.Bytes()));
  if (!block) throw std::bad_alloc();
  block->head = shape.Head();
  return block;
}

void Record::Release() noexcept {
  // A record moved from or never filled holds no block.
  if (bits_ != 0 && (bits_ & kInArena) == 0) std::free(block());
  bits_ = 0;
}

namespace {

// Runs `copy(done, step)` over [0, count) a megabyte at a time, giving back
// the pages of the source behind each step when it is scratch that is used
// up and large; else in one step.
template <typename Copy>
void CopyInSteps(size_t count, const void* source, size_t unitBytes, bool drop, Copy&& copy) noexcept {
  constexpr size_t kDropAbove = size_t{8} << 20;
  const size_t step = size_t{1} << 20;
  if (!drop || count * unitBytes < kDropAbove) {
    if (count) copy(size_t{0}, count);
    return;
  }
  auto* in = static_cast<char*>(const_cast<void*>(source));
  for (size_t done = 0; done < count; done += step) {
    const size_t n = std::min(step, count - done);
    copy(done, n);
    DiscardPages(in + done * unitBytes, n * unitBytes);
  }
}

// Copies `text` to `to`, one byte a character or UTF-16; a text copied to
// bytes must fit them.
void CopyText(CellText text, void* to, bool narrow, bool drop) noexcept {
  if (text.IsNarrow()) {
    if (narrow) {
      CopyBytes(to, text.Bytes(), text.size());
    } else {
      text.CopyTo(static_cast<char16_t*>(to));
    }
    return;
  }
  const char16_t* in = text.Units();
  CopyInSteps(text.size(), in, sizeof(char16_t), drop, [&](size_t done, size_t n) {
    if (narrow) {
      NarrowLatin1(in + done, n, static_cast<uint8_t*>(to) + done);
    } else {
      CopyBytes(static_cast<char16_t*>(to) + done, in + done, n * sizeof(char16_t));
    }
  });
}

bool FitsNarrow(CellText text) noexcept { return text.IsNarrow() || FitsLatin1(text.Units(), text.size()); }

}  // namespace

void Record::Fill(Block* block, const Shape& shape, CellText text, std::span<const uint32_t> ends,
                  bool dropSource) noexcept {
  if (shape.endBytes == 1) {
    auto* out = reinterpret_cast<uint8_t*>(block->ends);
    for (size_t k = 0; k < ends.size(); ++k) out[k] = static_cast<uint8_t>(ends[k]);
  } else if (shape.endBytes == 2) {
    auto* out = reinterpret_cast<uint16_t*>(block->ends);
    for (size_t k = 0; k < ends.size(); ++k) out[k] = static_cast<uint16_t>(ends[k]);
  } else {
    uint32_t* out = block->ends;
    CopyInSteps(ends.size(), ends.data(), sizeof(uint32_t), dropSource,
                [&](size_t done, size_t n) { std::memcpy(out + done, ends.data() + done, n * sizeof(uint32_t)); });
  }
  CopyText(text, shape.Text(block), shape.narrow, dropSource);
}

Record Record::InArena(RecordArena& arena, CellText text, std::span<const uint32_t> ends, bool dropSource,
                       Width width) {
  Record record;
  if (ends.empty()) return record;
  const bool narrow = width == Width::Unknown ? FitsNarrow(text) : width == Width::OneByte;
  const Shape shape(static_cast<uint32_t>(ends.size()), static_cast<uint32_t>(text.size()), narrow);
  Block* block = Allocate(shape, &arena);
  Fill(block, shape, text, ends, dropSource);
  record.Adopt(block, shape, true);
  return record;
}

Record::Shape Record::ShapeOfCells(std::span<const CellText> cells) noexcept {
  size_t total = 0;
  bool narrow = true;
  for (const CellText c : cells) {
    total += c.size();
    narrow = narrow && FitsNarrow(c);
  }
  return Shape(static_cast<uint32_t>(cells.size()), static_cast<uint32_t>(total), narrow);
}

void Record::FillCells(Block* block, const Shape& shape, std::span<const CellText> cells) noexcept {
  char* text = shape.Text(block);
  const size_t unit = shape.narrow ? 1 : sizeof(char16_t);
  uint32_t end = 0;
  for (size_t k = 0; k < cells.size(); ++k) {
    CopyText(cells[k], text + size_t{end} * unit, shape.narrow, false);
    end += static_cast<uint32_t>(cells[k].size());
    shape.SetEnd(block, k, end);
  }
}

Record::Record(std::span<const CellText> cells) {
  if (cells.empty()) return;
  const Shape shape = ShapeOfCells(cells);
  Block* block = Allocate(shape);
  FillCells(block, shape, cells);
  Adopt(block, shape, false);
}

Record Record::InArena(RecordArena& arena, std::span<const CellText> cells) {
  Record record;
  if (cells.empty()) return record;
  const Shape shape = ShapeOfCells(cells);
  Block* block = Allocate(shape, &arena);
  FillCells(block, shape, cells);
  record.Adopt(block, shape, true);
  return record;
}

Record::Record(CellText text, std::span<const uint32_t> ends, bool dropSource) {
  if (ends.empty()) return;
  const Shape shape(static_cast<uint32_t>(ends.size()), static_cast<uint32_t>(text.size()), FitsNarrow(text));
  Block* block = Allocate(shape);
  Fill(block, shape, text, ends, dropSource);
  Adopt(block, shape, false);
}

Record::Record(const Record& other) {
  if (!other.bits_) return;
  const Shape shape = ShapeOf(other);
  Block* copy = Allocate(shape);
  CopyBytes(copy, other.block(), shape.Bytes());
  Adopt(copy, shape, false);
}

Record& Record::operator=(const Record& other) {
  if (this != &other) *this = Record(other);
  return *this;
}

Record& Record::operator=(Record&& other) noexcept {
  if (this != &other) {
    Release();
    bits_ = other.bits_;
    other.bits_ = 0;
  }
  return *this;
}

Record::~Record() { Release(); }

void Record::Set(int32_t index, CellText text) {
  if (index < 0 || index >= Count()) RaiseListIndexError(index);
  Splice(index, 1, text, true);
}

void Record::Insert(int32_t index, CellText text) {
  if (index < 0 || index > Count()) RaiseListIndexError(index);
  Splice(index, 0, text, true);
}

void Record::Delete(int32_t index) {
  if (index < 0 || index >= Count()) RaiseListIndexError(index);
  Splice(index, 1, {}, false);
}

void Record::Move(int32_t from, int32_t to) {
  if (from == to) return;
  *this = Moved(from, to, nullptr);
}

void Record::PadTo(int32_t count) {
  const int32_t have = Count();
  if (have >= count) return;
  const Cells cells = AllCells();
  const CellText text = cells.All();
  std::vector<uint32_t> ends(static_cast<size_t>(count), static_cast<uint32_t>(text.size()));
  for (int32_t k = 0; k < have; ++k) ends[static_cast<size_t>(k)] = cells.End(k);
  *this = Record(text, ends);
}

Record Record::InsertedInto(RecordArena& arena, int32_t index, CellText text) const {
  if (index < 0 || index > Count()) RaiseListIndexError(index);
  return Spliced(index, 0, text, true, &arena);
}

Record Record::DeletedInto(RecordArena& arena, int32_t index) const {
  if (index < 0 || index >= Count()) RaiseListIndexError(index);
  return Spliced(index, 1, {}, false, &arena);
}

Record Record::MovedInto(RecordArena& arena, int32_t from, int32_t to) const { return Moved(from, to, &arena); }

Record Record::Moved(int32_t from, int32_t to, RecordArena* arena) const {
  const Cells cells = AllCells();
  const int32_t count = cells.Count();
  if (from < 0 || from >= count) RaiseListIndexError(from);
  if (to < 0 || to >= count) RaiseListIndexError(to);
  // The text in its new order is four runs of the old one: the cells before
  // both places, the moved cell and the cells between the places (which
  // shift by one) in the order of the move, and the cells after both.
  auto start = [&](int32_t k) { return k == 0 ? 0u : cells.End(k - 1); };
  const int32_t low = std::min(from, to), high = std::max(from, to);
  const CellText all = cells.All();
  const CellText moved = cells[from];
  const CellText between = from < to ? all.Sub(start(from + 1), cells.End(to) - start(from + 1))
                                     : all.Sub(start(to), start(from) - start(to));
  const Shape shape = ShapeOf(*this);
  Block* block = Allocate(shape, arena);
  char* out = shape.Text(block);
  const size_t unit = shape.narrow ? 1 : sizeof(char16_t);
  size_t at = start(low);
  CopyText(all.Sub(0, start(low)), out, shape.narrow, false);
  for (const CellText run : from < to ? std::array{between, moved} : std::array{moved, between}) {
    CopyText(run, out + at * unit, shape.narrow, false);
    at += run.size();
  }
  CopyText(all.Sub(cells.End(high), all.size() - cells.End(high)), out + at * unit, shape.narrow, false);
  // Each new cell's end, from the old cell now at its place.
  uint32_t end = 0;
  for (int32_t k = 0; k < count; ++k) {
    int32_t old = k;
    if (k >= low && k <= high) old = k == to ? from : (from < to ? k + 1 : k - 1);
    end += cells.End(old) - start(old);
    shape.SetEnd(block, static_cast<size_t>(k), end);
  }
  Record record;
  record.Adopt(block, shape, arena != nullptr);
  return record;
}

void Record::Splice(int32_t index, int32_t remove, CellText text, bool insert) {
  *this = Spliced(index, remove, text, insert, nullptr);
}

Record Record::Spliced(int32_t index, int32_t remove, CellText text, bool insert, RecordArena* arena) const {
  const Cells cells = AllCells();
  const int32_t oldCount = cells.Count();
  const int32_t newCount = oldCount - remove + (insert ? 1 : 0);
  Record spliced;
  if (newCount == 0) return spliced;
  const uint32_t cutBegin = index == 0 ? 0 : cells.End(index - 1);
  const uint32_t cutEnd = remove ? cells.End(index + remove - 1) : cutBegin;
  const CellText all = cells.All();
  const auto oldLength = static_cast<uint32_t>(all.size());
  const uint32_t added = insert ? static_cast<uint32_t>(text.size()) : 0;
  const CellText before = all.Sub(0, cutBegin);
  const CellText after = all.Sub(cutEnd, oldLength - cutEnd);
  const bool narrow = (!insert || FitsNarrow(text)) && (IsNarrow() || (FitsNarrow(before) && FitsNarrow(after)));
  const Shape shape(static_cast<uint32_t>(newCount), oldLength - (cutEnd - cutBegin) + added, narrow);
  Block* next = Allocate(shape, arena);
  // Text: the part before the cut, the new cell, the part after the cut.
  char* out = shape.Text(next);
  const size_t unit = narrow ? 1 : sizeof(char16_t);
  CopyText(before, out, narrow, false);
  if (added) CopyText(text, out + size_t{cutBegin} * unit, narrow, false);
  CopyText(after, out + size_t{cutBegin + added} * unit, narrow, false);
  // Ends: unchanged before the index, shifted after it.
  auto setEnd = [&](int32_t k, uint32_t end) { shape.SetEnd(next, static_cast<size_t>(k), end); };
  int32_t k = 0;
  for (; k < index; ++k) setEnd(k, cells.End(k));
  if (insert) setEnd(k++, cutBegin + added);
  for (int32_t j = index + remove; j < oldCount; ++j, ++k) setEnd(k, cells.End(j) - (cutEnd - cutBegin) + added);
  spliced.Adopt(next, shape, arena != nullptr);
  return spliced;
}

}  // namespace qm
