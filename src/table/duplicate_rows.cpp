#include "table/duplicate_rows.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "core/case_fold.h"
#include "core/simd_copy.h"
#include "table/raw_buffer.h"

namespace qm {

namespace {

// Two rows are duplicates when their keys are equal: the cells joined as
// comma text (delimiter ",", quote '"', strict off), whatever the table's own
// delimiter, folded when letter case does not count.
//
// The keys are never built. Joining quotes every cell that holds a comma, a
// quote or a blank and doubles its quotes, so two keys are equal exactly when
// the rows have the same number of cells and equal cells in order (no cell
// can hold the character 0, which would end a text). Folding changes none of
// those characters and keeps every cell's length, so folded keys are equal
// exactly when the folded cells are. Hashing and comparing the cells
// themselves thus gives the same answer without writing a million keys.
class RowKeys {
 public:
  explicit RowKeys(bool caseSensitive) : fold_(!caseSensitive) {}

  // A record keeps its cells back to back: with equal cell lengths (where
  // the cells end), equal texts mean equal cells, so the text is hashed and
  // compared in one piece.
  uint64_t Hash(const Record& record) {
    const Record::Cells cells = record.AllCells();
    uint64_t h = static_cast<uint64_t>(cells.Count()) * kMultiplier;
    for (int32_t k = 0; k < cells.Count(); ++k) h = Mix(h ^ cells.End(k));
    const CellText text = cells.All();
    if (text.IsNarrow()) {
      return Finish(fold_ ? HashFoldedBytes(text.Bytes(), text.size(), h) : HashBytes(text.Bytes(), text.size(), h));
    } else {
      const std::u16string_view units(text.Units(), text.size());
      if (!fold_) return Finish(HashUnits<false>(units, h));
      if (IsAscii(units)) return Finish(HashUnits<true>(units, h));
    }
    return Finish(HashUnits<false>(Folded(record, scratch_), h));
  }

  bool Equal(const Record& a, const Record& b) {
    const Record::Cells ca = a.AllCells(), cb = b.AllCells();
    if (ca.Count() != cb.Count()) return false;
    for (int32_t k = 0; k < ca.Count(); ++k) {
      if (ca.End(k) != cb.End(k)) return false;
    }
    if (!fold_) return ca.All() == cb.All();
    const std::u16string_view folded = Folded(a, scratch_);
    return folded == Folded(b, other_);
  }

 private:
  static constexpr uint64_t kMultiplier = 0x9E3779B97F4A7C15ull;
  static constexpr uint64_t kNonAscii4 = 0xFF80FF80FF80FF80ull;

  static uint64_t Mix(uint64_t h) {
    h *= kMultiplier;
    return h ^ (h >> 29);
  }
  static uint64_t Finish(uint64_t h) {
    h ^= h >> 33;
    h *= 0xFF51AFD7ED558CCDull;
    h ^= h >> 33;
    h *= 0xC4CEB9FE1A85EC53ull;
    return h ^ (h >> 33);
  }

  static bool IsAscii(std::u16string_view cell) {
    char16_t seen = 0;
    for (const char16_t c : cell) seen |= c;
    return seen < 0x80;
  }

  // Four ASCII units at once, upper-case letters moved to lower case: in each
  // 16-bit lane c + 63 reaches 0x80 from "A" on and c + 37 from past "Z" on,
  // and no lane can carry into the next.
  static uint64_t FoldAscii4(uint64_t w) {
    const uint64_t fromA = w + 0x003F003F003F003Full;
    const uint64_t pastZ = w + 0x0025002500250025ull;
    const uint64_t letters = fromA & ~pastZ & 0x0080008000800080ull;
    return w + (letters >> 2);
  }

  // The units of a cell, folded on the way when it is all ASCII (Fold), which
  // hashes the same units as folding the cell first would.
  template <bool Fold>
  static uint64_t HashUnits(std::u16string_view cell, uint64_t h) {
    const char16_t* p = cell.data();
    size_t n = cell.size();
    for (; n >= 4; p += 4, n -= 4) {
      uint64_t w;
      std::memcpy(&w, p, sizeof w);
      if (Fold) w = FoldAscii4(w);
      h = Mix(h ^ w);
    }
    if (n) {
      uint64_t w = LoadShort(p, n * sizeof(char16_t));
      if (Fold) w = FoldAscii4(w);
      h = Mix(h ^ w);
    }
    return h;
  }

  // The same for one-byte text: each byte is hashed as the unit it stands
  // for, so a text hashes alike however its record keeps it.
  static uint64_t HashBytes(const uint8_t* p, size_t n, uint64_t h) {
    auto widen4 = [](uint32_t x) {
      uint64_t w = x;
      w = (w | (w << 16)) & 0x0000FFFF0000FFFFull;
      return (w | (w << 8)) & 0x00FF00FF00FF00FFull;
    };
    for (; n >= 4; p += 4, n -= 4) {
      uint32_t x;
      std::memcpy(&x, p, sizeof x);
      h = Mix(h ^ widen4(x));
    }
    if (n) {
      h = Mix(h ^ widen4(static_cast<uint32_t>(LoadShort(p, n))));
    }
    return h;
  }

  // The folded units of one-byte text, as HashUnits hashes a folded text.
  static uint64_t HashFoldedBytes(const uint8_t* p, size_t n, uint64_t h) {
    const std::array<char16_t, 256>& fold = Latin1Folding();
    for (; n >= 4; p += 4, n -= 4) {
      h = Mix(h ^ (uint64_t{fold[p[0]]} | uint64_t{fold[p[1]]} << 16 | uint64_t{fold[p[2]]} << 32 |
                   uint64_t{fold[p[3]]} << 48));
    }
    if (n) {
      uint64_t w = 0;
      for (size_t k = 0; k < n; ++k) w |= uint64_t{fold[p[k]]} << (16 * k);
      h = Mix(h ^ w);
    }
    return h;
  }

  // The folding of every character below U+0100 (some fold to characters
  // above it, as U+00B5 does).
  static const std::array<char16_t, 256>& Latin1Folding() {
    static const std::array<char16_t, 256> table = [] {
      std::array<char16_t, 256> folded{};
      for (char32_t c = 0; c < 256; ++c) folded[c] = static_cast<char16_t>(FoldCase(c));
      return folded;
    }();
    return table;
  }

  // The folded cells back to back, as if each cell were folded on its own
  // (in the key a delimiter or quote stands between two cells). Runs of four
  // ASCII units are folded at once; other units go through the full folding
  // in runs, which never split a surrogate pair.
  static std::u16string_view Folded(const Record& record, std::u16string& buffer) {
    const Record::Cells cells = record.AllCells();
    const CellText all = cells.All();
    if (all.IsNarrow()) return FoldedNarrow(all, buffer);
    const std::u16string_view text(all.Units(), all.size());
    const size_t n = text.size();
    buffer.resize(n);
    const char16_t* in = text.data();
    char16_t* out = buffer.data();
    for (size_t i = 0; i < n;) {
      if (i + 4 <= n) {
        uint64_t w;
        std::memcpy(&w, in + i, sizeof w);
        if ((w & kNonAscii4) == 0) {
          w = FoldAscii4(w);
          std::memcpy(out + i, &w, sizeof w);
          i += 4;
          continue;
        }
      }
      if (in[i] < 0x80) {
        out[i] = static_cast<char16_t>(FoldAscii4(in[i]));
        ++i;
        continue;
      }
      size_t j = i + 1;
      while (j < n && in[j] >= 0x80) ++j;
      FoldCase(in + i, j - i, out + i);
      i = j;
    }
    // A high surrogate ending one cell and a low one starting the next were
    // folded as a pair above; folded apart, as the key has them, they stay.
    for (int32_t k = 0; k + 1 < cells.Count(); ++k) {
      const size_t end = cells.End(k);
      if (end > 0 && end < n && IsHighSurrogate(in[end - 1]) && IsLowSurrogate(in[end])) {
        out[end - 1] = in[end - 1];
        out[end] = in[end];
      }
    }
    return buffer;
  }

  // The same for a record kept one byte a character.
  static std::u16string_view FoldedNarrow(CellText text, std::u16string& buffer) {
    const std::array<char16_t, 256>& fold = Latin1Folding();
    buffer.resize(text.size());
    const uint8_t* bytes = text.Bytes();
    for (size_t k = 0; k < text.size(); ++k) buffer[k] = fold[bytes[k]];
    return buffer;
  }

  static bool IsHighSurrogate(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }
  static bool IsLowSurrogate(char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

  bool fold_;
  std::u16string scratch_;
  std::u16string other_;
};

// The rows kept so far, by key. Only the row and 32 bits of its hash are
// stored; a matching tag is confirmed by comparing the rows themselves.
class KeptRows {
 public:
  KeptRows(const std::vector<Record>& records, bool caseSensitive) : records_(records), keys_(caseSensitive) {
    size_t capacity = 16;
    while (capacity < records.size() * 2) capacity *= 2;
    mask_ = capacity - 1;
    // A large block: the inserts land all over it, and huge pages, where the
    // system gives them, spare a page-table walk on nearly every one.
    slots_ = slotMemory_.Reserve(capacity);
    std::memset(slots_, 0, capacity * sizeof(Slot));
  }

  uint64_t Hash(int32_t row) { return keys_.Hash(records_[static_cast<size_t>(row)]); }

  // Fetches the row's first slot ahead of Insert: the slots are spread over
  // far more memory than the caches hold.
  void Prefetch(uint64_t hash) const { __builtin_prefetch(&slots_[hash & mask_]); }

  // Adds the row with its hash; false when an equal row is already there.
  bool Insert(int32_t row, uint64_t hash) {
    const Record& record = records_[static_cast<size_t>(row)];
    const auto tag = static_cast<uint32_t>(hash >> 32);
    for (size_t i = hash & mask_;; i = (i + 1) & mask_) {
      Slot& slot = slots_[i];
      if (slot.rowPlusOne == 0) {
        slot = {tag, static_cast<uint32_t>(row) + 1};
        return true;
      }
      if (slot.tag == tag && keys_.Equal(records_[slot.rowPlusOne - 1], record)) return false;
    }
  }

 private:
  struct Slot {
    uint32_t tag;
    uint32_t rowPlusOne;  // 0: free
  };

  const std::vector<Record>& records_;
  RowKeys keys_;
  size_t mask_ = 0;
  RawBuffer<Slot> slotMemory_;
  Slot* slots_ = nullptr;
};

}  // namespace

// Walks from the last row up, so the last of each set of equal rows is the one
// that stays and every earlier one goes: x, y, x becomes y, x.
std::vector<bool> FindDuplicateRows(const std::vector<Record>& records, bool caseSensitive, int32_t& deleted) {
  const auto rows = static_cast<int32_t>(records.size());
  KeptRows kept(records, caseSensitive);
  std::vector<bool> duplicate(records.size(), false);
  deleted = 0;
  // Hashes a batch of rows first and fetches their slots, then inserts them
  // one by one, still from the bottom up. The next batch's records are
  // fetched meanwhile: after a sort they lie in no order in memory.
  constexpr int32_t kBatch = 16;
  uint64_t hashes[kBatch];
  for (int32_t top = rows; top > 0; top -= kBatch) {
    const int32_t count = top < kBatch ? top : kBatch;
    for (int32_t k = 0; k < count; ++k) {
      if (top - 1 - k - kBatch >= 0) records[static_cast<size_t>(top - 1 - k - kBatch)].Prefetch();
      hashes[k] = kept.Hash(top - 1 - k);
      kept.Prefetch(hashes[k]);
    }
    for (int32_t k = 0; k < count; ++k) {
      const int32_t row = top - 1 - k;
      if (!kept.Insert(row, hashes[k])) {
        duplicate[static_cast<size_t>(row)] = true;
        ++deleted;
      }
    }
  }
  return duplicate;
}

}  // namespace qm
