// One table record: an ordered list of UTF-16 cells kept back to back in a
// single heap block, so a million records cost a million allocations, not ten
// million, and the text dominates the memory.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace qm {

class RecordArena;

class Record {
 public:
  Record() noexcept = default;
  // A record of the given cells, copied.
  explicit Record(std::span<const std::u16string_view> cells);
  // A record from cell texts laid end to end in `text`: cell k spans
  // [ends[k-1], ends[k]) with ends[-1] taken as 0.
  // With `dropSource` the text and ends are scratch that is used up: the
  // pages of a large one are given back as they are copied, so the scratch
  // and the record never both sit in memory whole (a line of a hundred
  // megabytes). Their contents are undefined afterwards.
  Record(std::u16string_view text, std::span<const uint32_t> ends, bool dropSource = false);
  // The same, with the block taken from `arena`: it is released with the
  // arena, never on its own (a change to the record moves it to the heap).
  static Record InArena(RecordArena& arena, std::u16string_view text, std::span<const uint32_t> ends,
                        bool dropSource = false);
  // A copy always lives on the heap.
  Record(const Record& other);
  Record(Record&& other) noexcept : bits_(other.bits_) { other.bits_ = 0; }
  Record& operator=(const Record& other);
  Record& operator=(Record&& other) noexcept;
  ~Record();

  int32_t Count() const noexcept { return bits_ ? static_cast<int32_t>(block()->count) : 0; }

  // Unchecked access, for loops that stay within Count().
  std::u16string_view Cell(int32_t index) const noexcept {
    const uint32_t begin = index == 0 ? 0 : block()->ends[index - 1];
    return {Text() + begin, block()->ends[index] - begin};
  }
  // The cells of a record that is not changed meanwhile, for loops over
  // many cells: the block is looked up once.
  class Cells {
   public:
    int32_t Count() const noexcept { return count_; }
    std::u16string_view operator[](int32_t index) const noexcept {
      const uint32_t begin = index == 0 ? 0 : ends_[index - 1];
      return {text_ + begin, ends_[index] - begin};
    }
    // Where cell `index` ends in All(): the next cell starts there.
    uint32_t End(int32_t index) const noexcept { return ends_[index]; }
    // All the cells' text, back to back.
    std::u16string_view All() const noexcept { return {text_, count_ ? ends_[count_ - 1] : 0}; }

   private:
    friend class Record;
    const uint32_t* ends_ = nullptr;
    const char16_t* text_ = nullptr;
    int32_t count_ = 0;
  };
  Cells AllCells() const noexcept {
    Cells cells;
    if (bits_) {
      cells.count_ = Count();
      cells.ends_ = block()->ends;
      cells.text_ = Text();
    }
    return cells;
  }

  // Hints to the processor that the record is read soon, for loops over
  // records that lie in no particular order in memory (as after a sort).
  // PrefetchStart fetches the block's first line; PrefetchAll, once that
  // line is in, the rest of the block (up to 1 KiB of it).
  void PrefetchStart() const noexcept {
    if (bits_) __builtin_prefetch(block());
  }
  void PrefetchAll() const noexcept {
    if (!bits_) return;
    const uintptr_t begin = bits_ & ~kInArena;
    const uintptr_t end = begin + std::min<size_t>(BlockBytes(block()->count, TextLength()), 1024);
    for (uintptr_t line = (begin | 63) + 1; line < end; line += 64) __builtin_prefetch(reinterpret_cast<const void*>(line));
  }

  // Checked access: an index outside 0..Count()-1 raises the list's index error.
  std::u16string_view At(int32_t index) const;

  // Each raises the list's index error when the index is outside the list
  // (Insert allows Count(), the end). Nothing changes on an error.
  void Set(int32_t index, std::u16string_view text);
  void Insert(int32_t index, std::u16string_view text);
  void Append(std::u16string_view text) { Insert(Count(), text); }
  void Delete(int32_t index);
  // Takes the cell out at `from` and inserts it at `to` of the shortened list.
  void Move(int32_t from, int32_t to);
  // Appends empty cells until the record has `count` cells.
  void PadTo(int32_t count);

 private:
  struct Block {
    uint32_t count;
    uint32_t ends[1];  // one per cell, then the text (char16_t)
  };
  // The block's address, with kInArena set for a block of an arena: kept in
  // the record itself, so that releasing a table's records reads none of
  // their blocks.
  static constexpr uintptr_t kInArena = 1;
  Block* block() const noexcept { return reinterpret_cast<Block*>(bits_ & ~kInArena); }
  void Adopt(Block* block, bool inArena) noexcept { bits_ = reinterpret_cast<uintptr_t>(block) | (inArena ? kInArena : 0); }
  static size_t BlockBytes(uint32_t count, uint32_t textLength) {
    return sizeof(uint32_t) * (1 + size_t{count}) + sizeof(char16_t) * size_t{textLength};
  }
  const char16_t* Text() const noexcept { return reinterpret_cast<const char16_t*>(block()->ends + Count()); }
  uint32_t TextLength() const noexcept { return Count() ? block()->ends[Count() - 1] : 0; }
  static Block* Allocate(uint32_t count, uint32_t textLength);
  // Fills a new block's ends and text.
  static void Fill(Block* block, std::u16string_view text, std::span<const uint32_t> ends, bool dropSource) noexcept;
  // Frees a heap block; an arena's block stays for the arena.
  void Release() noexcept;
  // Rebuilds the block with cell `index` replaced by `text` (`remove` cells
  // taken out there first, `insert` of them put in).
  void Splice(int32_t index, int32_t remove, std::u16string_view text, bool insert);

  uintptr_t bits_ = 0;
};

}  // namespace qm
