#include "table/record.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "core/errors.h"
#include "platform/large_blocks.h"
#include "table/record_arena.h"

namespace qm {

Record::Block* Record::Allocate(uint32_t count, uint32_t textLength) {
  auto* block = static_cast<Block*>(std::malloc(BlockBytes(count, textLength)));
  if (!block) throw std::bad_alloc();
  block->count = count;
  return block;
}

void Record::Release() noexcept {
  if ((bits_ & kInArena) == 0) std::free(block());
  bits_ = 0;
}

namespace {

// Copies scratch that is used up, giving its pages back behind the copy when
// it is large.
void CopyScratch(void* to, const void* from, size_t bytes, bool drop) noexcept {
  constexpr size_t kDropAbove = size_t{8} << 20;
  constexpr size_t kStep = size_t{1} << 20;
  if (!drop || bytes < kDropAbove) {
    if (bytes) std::memcpy(to, from, bytes);
    return;
  }
  auto* out = static_cast<char*>(to);
  auto* in = static_cast<char*>(const_cast<void*>(from));
  for (size_t done = 0; done < bytes; done += kStep) {
    const size_t step = std::min(kStep, bytes - done);
    std::memcpy(out + done, in + done, step);
    DiscardPages(in + done, step);
  }
}

}  // namespace

void Record::Fill(Block* block, std::u16string_view text, std::span<const uint32_t> ends, bool dropSource) noexcept {
  CopyScratch(block->ends, ends.data(), ends.size() * sizeof(uint32_t), dropSource);
  CopyScratch(block->ends + ends.size(), text.data(), text.size() * sizeof(char16_t), dropSource);
}

Record Record::InArena(RecordArena& arena, std::u16string_view text, std::span<const uint32_t> ends, bool dropSource) {
  Record record;
  if (ends.empty()) return record;
  const auto count = static_cast<uint32_t>(ends.size());
  auto* block = static_cast<Block*>(arena.Allocate(BlockBytes(count, static_cast<uint32_t>(text.size()))));
  block->count = count;
  Fill(block, text, ends, dropSource);
  record.Adopt(block, true);
  return record;
}

Record::Record(std::span<const std::u16string_view> cells) {
  if (cells.empty()) return;
  size_t total = 0;
  for (auto c : cells) total += c.size();
  Adopt(Allocate(static_cast<uint32_t>(cells.size()), static_cast<uint32_t>(total)), false);
  auto* out = const_cast<char16_t*>(Text());
  uint32_t end = 0;
  for (size_t k = 0; k < cells.size(); ++k) {
    if (!cells[k].empty()) std::memcpy(out + end, cells[k].data(), cells[k].size() * sizeof(char16_t));
    end += static_cast<uint32_t>(cells[k].size());
    block()->ends[k] = end;
  }
}

Record::Record(std::u16string_view text, std::span<const uint32_t> ends, bool dropSource) {
  if (ends.empty()) return;
  Block* block = Allocate(static_cast<uint32_t>(ends.size()), static_cast<uint32_t>(text.size()));
  Fill(block, text, ends, dropSource);
  Adopt(block, false);
}

Record::Record(const Record& other) {
  if (!other.bits_) return;
  const auto count = static_cast<uint32_t>(other.Count());
  Adopt(Allocate(count, other.TextLength()), false);
  std::memcpy(block()->ends, other.block()->ends, sizeof(uint32_t) * count);
  std::memcpy(const_cast<char16_t*>(Text()), other.Text(), sizeof(char16_t) * other.TextLength());
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

std::u16string_view Record::At(int32_t index) const {
  if (index < 0 || index >= Count()) RaiseListIndexError(index);
  return Cell(index);
}

void Record::Set(int32_t index, std::u16string_view text) {
  if (index < 0 || index >= Count()) RaiseListIndexError(index);
  Splice(index, 1, text, true);
}

void Record::Insert(int32_t index, std::u16string_view text) {
  if (index < 0 || index > Count()) RaiseListIndexError(index);
  Splice(index, 0, text, true);
}

void Record::Delete(int32_t index) {
  if (index < 0 || index >= Count()) RaiseListIndexError(index);
  Splice(index, 1, {}, false);
}

void Record::Move(int32_t from, int32_t to) {
  if (from == to) return;
  if (from < 0 || from >= Count()) RaiseListIndexError(from);
  if (to < 0 || to >= Count()) RaiseListIndexError(to);
  const std::u16string cell(Cell(from));
  Splice(from, 1, {}, false);
  Splice(to, 0, cell, true);
}

void Record::PadTo(int32_t count) {
  const int32_t have = Count();
  if (have >= count) return;
  Block* grown = Allocate(static_cast<uint32_t>(count), TextLength());
  const uint32_t length = TextLength();
  if (bits_) {
    std::memcpy(grown->ends, block()->ends, sizeof(uint32_t) * static_cast<size_t>(have));
    std::memcpy(reinterpret_cast<char16_t*>(grown->ends + count), Text(), sizeof(char16_t) * length);
  }
  for (int32_t k = have; k < count; ++k) grown->ends[k] = length;
  Release();
  Adopt(grown, false);
}

void Record::Splice(int32_t index, int32_t remove, std::u16string_view text, bool insert) {
  const int32_t oldCount = Count();
  const int32_t newCount = oldCount - remove + (insert ? 1 : 0);
  const uint32_t cutBegin = index == 0 ? 0 : block()->ends[index - 1];
  const uint32_t cutEnd = remove ? block()->ends[index + remove - 1] : cutBegin;
  const uint32_t oldLength = TextLength();
  const uint32_t added = insert ? static_cast<uint32_t>(text.size()) : 0;
  const uint32_t newLength = oldLength - (cutEnd - cutBegin) + added;
  if (newCount == 0) {
    Release();
    return;
  }
  Block* next = Allocate(static_cast<uint32_t>(newCount), newLength);
  auto* out = reinterpret_cast<char16_t*>(next->ends + newCount);
  const char16_t* in = bits_ ? Text() : nullptr;
  // Text: the part before the cut, the new cell, the part after the cut.
  if (cutBegin) std::memcpy(out, in, sizeof(char16_t) * cutBegin);
  if (added) std::memcpy(out + cutBegin, text.data(), sizeof(char16_t) * added);
  if (oldLength > cutEnd) std::memcpy(out + cutBegin + added, in + cutEnd, sizeof(char16_t) * (oldLength - cutEnd));
  // Ends: unchanged before the index, shifted after it.
  int32_t k = 0;
  for (; k < index; ++k) next->ends[k] = block()->ends[k];
  if (insert) next->ends[k++] = cutBegin + added;
  for (int32_t j = index + remove; j < oldCount; ++j, ++k) {
    next->ends[k] = block()->ends[j] - (cutEnd - cutBegin) + added;
  }
  Release();
  Adopt(next, false);
}

}  // namespace qm
