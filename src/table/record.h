// One table record: an ordered list of cells kept back to back in a single
// block, so a million records cost a million allocations, not ten million, and
// the text dominates the memory. A record whose characters all lie below
// U+0100 (most records of most tables) keeps them one byte each, any other in
// UTF-16; a record of less than 256 characters keeps its cell ends in 8 bits,
// one of less than 64 Ki in 16, a longer one in 32. How a record is kept
// follows from its text alone, so equal records are always kept alike.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "core/errors.h"
#include "table/cell_text.h"

namespace qm {

class RecordArena;

class Record {
 public:
  Record() noexcept = default;
  // A record of the given cells, copied.
  explicit Record(std::span<const CellText> cells);
  explicit Record(std::span<const std::u16string_view> cells)
      : Record(std::vector<CellText>(cells.begin(), cells.end())) {}
  // A record from cell texts laid end to end in `text`: cell k spans
  // [ends[k-1], ends[k]) with ends[-1] taken as 0.
  // With `dropSource` the text and ends are scratch that is used up: the
  // pages of a large one are given back as they are copied, so the scratch
  // and the record never both sit in memory whole (a line of a hundred
  // megabytes). Their contents are undefined afterwards.
  Record(CellText text, std::span<const uint32_t> ends, bool dropSource = false);
  // What a caller that made the text knows of its characters; a record looks
  // at them itself unless told whether they all lie below U+0100.
  enum class Width : uint8_t { Unknown, OneByte, Wide };
  // The same, with the block taken from `arena`: it is released with the
  // arena, never on its own (a change to the record moves it to the heap).
  static Record InArena(RecordArena& arena, CellText text, std::span<const uint32_t> ends, bool dropSource = false,
                        Width width = Width::Unknown);
  // A record of the given cells, copied into a block of `arena`.
  static Record InArena(RecordArena& arena, std::span<const CellText> cells);
  // A copy always lives on the heap.
  Record(const Record& other);
  Record(Record&& other) noexcept : bits_(other.bits_) { other.bits_ = 0; }
  Record& operator=(const Record& other);
  Record& operator=(Record&& other) noexcept;
  ~Record();

  int32_t Count() const noexcept {
    return bits_ ? static_cast<int32_t>(Shape::Of(block()->head, IsNarrow()).count) : 0;
  }
  // Whether the record keeps its characters one byte each.
  bool IsNarrow() const noexcept { return (bits_ & kNarrow) != 0; }

  // Unchecked access, for loops that stay within Count().
  CellText Cell(int32_t index) const noexcept { return AllCells()[index]; }
  // The cells of a record that is not changed meanwhile, for loops over
  // many cells: the block is looked up once.
  class Cells {
   public:
    int32_t Count() const noexcept { return count_; }
    bool IsNarrow() const noexcept { return narrow_; }
    CellText operator[](int32_t index) const noexcept {
      const uint32_t begin = index == 0 ? 0 : End(index - 1);
      return Span(begin, End(index) - begin);
    }
    // Where cell `index` ends in All(): the next cell starts there.
    uint32_t End(int32_t index) const noexcept {
      switch (endBytes_) {
        case 1: return static_cast<const uint8_t*>(ends_)[index];
        case 2: return static_cast<const uint16_t*>(ends_)[index];
        default: return static_cast<const uint32_t*>(ends_)[index];
      }
    }
    // Calls f with the cell ends as the array they are kept in (of uint8_t,
    // uint16_t or uint32_t), for loops over many cells that would otherwise
    // ask End() for the ends' size at every cell.
    template <typename F>
    decltype(auto) WithEnds(F&& f) const {
      switch (endBytes_) {
        case 1: return f(static_cast<const uint8_t*>(ends_));
        case 2: return f(static_cast<const uint16_t*>(ends_));
        default: return f(static_cast<const uint32_t*>(ends_));
      }
    }
    // All the cells' text, back to back.
    CellText All() const noexcept { return Span(0, count_ ? End(count_ - 1) : 0); }

   private:
    friend class Record;
    CellText Span(uint32_t begin, uint32_t size) const noexcept {
      return narrow_ ? CellText::Narrow(static_cast<const uint8_t*>(text_) + begin, size)
                     : CellText(std::u16string_view(static_cast<const char16_t*>(text_) + begin, size));
    }
    const void* ends_ = nullptr;
    const void* text_ = nullptr;
    int32_t count_ = 0;
    bool narrow_ = false;
    uint8_t endBytes_ = 4;
  };
  Cells AllCells() const noexcept {
    Cells cells;
    if (bits_) {
      const Block* b = block();
      const Shape shape = Shape::Of(b->head, IsNarrow());
      cells.count_ = static_cast<int32_t>(shape.count);
      cells.narrow_ = shape.narrow;
      cells.endBytes_ = shape.endBytes;
      cells.ends_ = b->ends;
      cells.text_ = static_cast<const char*>(static_cast<const void*>(b->ends)) + shape.EndsBytes();
    }
    return cells;
  }

  // Hints to the processor that the record is read soon, for loops over
  // records that lie in no particular order in memory (as after a sort):
  // fetches the first three lines of its block, most records whole. The
  // block itself is not read, so the loop never waits on it here; the rest
  // of a longer block follows in order once it is read.
  void Prefetch() const noexcept {
    if (!bits_) return;
    const auto* begin = reinterpret_cast<const char*>(bits_ & ~kTagBits);
    __builtin_prefetch(begin);
    __builtin_prefetch(begin + 64);
    __builtin_prefetch(begin + 128);
  }

  // Checked access: an index outside 0..Count()-1 raises the list's index error.
  CellText At(int32_t index) const {
    const Cells cells = AllCells();
    if (index < 0 || index >= cells.Count()) RaiseListIndexError(index);
    return cells[index];
  }

  // Each raises the list's index error when the index is outside the list
  // (Insert allows Count(), the end). Nothing changes on an error.
  void Set(int32_t index, CellText text);
  void Insert(int32_t index, CellText text);
  void Append(CellText text) { Insert(Count(), text); }
  void Delete(int32_t index);
  // Takes the cell out at `from` and inserts it at `to` of the shortened list.
  void Move(int32_t from, int32_t to);
  // Insert, Delete and Move made in a new record whose block is taken from
  // `arena`, with the same errors; this record stays as it is. For steps
  // that change every record of a table alike.
  Record InsertedInto(RecordArena& arena, int32_t index, CellText text) const;
  Record DeletedInto(RecordArena& arena, int32_t index) const;
  Record MovedInto(RecordArena& arena, int32_t from, int32_t to) const;
  // Appends empty cells until the record has `count` cells.
  void PadTo(int32_t count);

 private:
  struct Block {
    uint32_t head;     // the cell count, with kShortEnds and kEnds8 for the ends' size
    uint32_t ends[1];  // one per cell (8, 16 or 32 bits), then the text (bytes or char16_t)
  };
  // kShortEnds: 16-bit ends, or 8-bit ones with kEnds8 too. A record of short
  // ends has at most 64 Ki cells, so kEnds8 is free there; the count of one
  // of 32-bit ends takes 31 bits.
  static constexpr uint32_t kShortEnds = 0x80000000u;
  static constexpr uint32_t kEnds8 = 0x40000000u;
  static constexpr uint32_t kShortCountBits = 0x3FFFFFFFu;
  static constexpr uint32_t kCountBits = 0x7FFFFFFFu;
  // The block's address, with kInArena set for a block of an arena and
  // kNarrow for one-byte text: kept in the record itself, so that releasing
  // a table's records reads none of their blocks.
  static constexpr uintptr_t kInArena = 1;
  static constexpr uintptr_t kNarrow = 2;
  static constexpr uintptr_t kTagBits = kInArena | kNarrow;

  // How a block of `count` cells and `length` characters is laid out. UTF-16
  // text starts at an even offset: after an odd number of 8-bit ends comes a
  // byte of padding.
  struct Shape {
    uint32_t count = 0;
    uint32_t length = 0;  // unknown (0) in a shape read from a block's head
    bool narrow = false;
    uint8_t endBytes = 4;
    Shape(uint32_t cells, uint32_t characters, bool oneByte)
        : count(cells),
          length(characters),
          narrow(oneByte),
          endBytes(characters <= 0xFF ? 1 : (characters <= 0xFFFF ? 2 : 4)) {}
    static Shape Of(uint32_t head, bool narrow) noexcept {
      Shape shape(0, 0, narrow);
      if (head & kShortEnds) {
        shape.endBytes = (head & kEnds8) ? 1 : 2;
        shape.count = head & kShortCountBits;
      } else {
        shape.endBytes = 4;
        shape.count = head & kCountBits;
      }
      return shape;
    }
    uint32_t Head() const noexcept {
      return count | (endBytes == 1 ? kShortEnds | kEnds8 : (endBytes == 2 ? kShortEnds : 0));
    }
    size_t EndsBytes() const noexcept {
      const size_t bytes = size_t{count} * endBytes;
      return narrow ? bytes : (bytes + 1) & ~size_t{1};
    }
    size_t Bytes() const noexcept { return sizeof(uint32_t) + EndsBytes() + size_t{length} * (narrow ? 1 : 2); }
    // Stores cell k's end.
    void SetEnd(Block* block, size_t k, uint32_t end) const noexcept {
      switch (endBytes) {
        case 1: reinterpret_cast<uint8_t*>(block->ends)[k] = static_cast<uint8_t>(end); break;
        case 2: reinterpret_cast<uint16_t*>(block->ends)[k] = static_cast<uint16_t>(end); break;
        default: block->ends[k] = end;
      }
    }
    char* Text(Block* block) const noexcept { return reinterpret_cast<char*>(block->ends) + EndsBytes(); }
  };
  static Shape ShapeOf(const Record& record) noexcept {
    const Cells cells = record.AllCells();
    return Shape(static_cast<uint32_t>(cells.Count()), static_cast<uint32_t>(cells.All().size()), cells.IsNarrow());
  }

  Block* block() const noexcept { return reinterpret_cast<Block*>(bits_ & ~kTagBits); }
  void Adopt(Block* block, const Shape& shape, bool inArena) noexcept {
    bits_ = reinterpret_cast<uintptr_t>(block) | (inArena ? kInArena : 0) | (shape.narrow ? kNarrow : 0);
  }
  // A block of the shape, its head set: from `arena`, or from the heap.
  static Block* Allocate(const Shape& shape, RecordArena* arena = nullptr);
  // Fills a new block's ends and text from `text` and `ends`, whose text
  // must fit the shape.
  static void Fill(Block* block, const Shape& shape, CellText text, std::span<const uint32_t> ends,
                   bool dropSource) noexcept;
  // How a block of these cells is laid out, and the block filled with them.
  static Shape ShapeOfCells(std::span<const CellText> cells) noexcept;
  static void FillCells(Block* block, const Shape& shape, std::span<const CellText> cells) noexcept;
  // Frees a heap block; an arena's block stays for the arena.
  void Release() noexcept;
  // Rebuilds the block with cell `index` replaced by `text` (`remove` cells
  // taken out there first, `insert` of them put in).
  void Splice(int32_t index, int32_t remove, CellText text, bool insert);
  // The same change in a new record, its block from `arena` or, without
  // one, from the heap; this record stays as it is.
  Record Spliced(int32_t index, int32_t remove, CellText text, bool insert, RecordArena* arena) const;
  // Move made the same way.
  Record Moved(int32_t from, int32_t to, RecordArena* arena) const;

  uintptr_t bits_ = 0;
};

}  // namespace qm
