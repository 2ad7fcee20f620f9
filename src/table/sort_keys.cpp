#include "table/sort_keys.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "platform/decimal_separator.h"
#include "table/fetched_records.h"
#include "table/raw_buffer.h"

namespace qm {

namespace {

constexpr char16_t FoldAscii(char16_t c) { return (c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - 32) : c; }

constexpr bool IsNumberBlank(char16_t c) { return c == u' ' || c == u'\t'; }
constexpr bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

// Text keys are sorted four UTF-16 units at a time: each key carries the
// next four (folded) units packed into one integer and how many units are
// left. Keys are sorted by that pair; runs that tie and go on are refilled
// with their next four units and sorted again. Each cell is read once per
// level instead of twice per comparison, which keeps a sort of a million
// rows with many equal or long-prefixed keys fast.
struct TextKey {
  uint64_t digits;  // four units from the current depth, zero padded
  uint32_t left;    // units left from the current depth, at most 5
  uint32_t row;
};

inline bool DigitLess(const TextKey& a, const TextKey& b) {
  return a.digits != b.digits ? a.digits < b.digits : a.left < b.left;
}
inline bool DigitEqual(const TextKey& a, const TextKey& b) { return a.digits == b.digits && a.left == b.left; }

// The four units of `cell` from `depth` on, zero padded, in one integer.
template <bool Fold, typename Unit>
inline uint64_t PackDigits(const Unit* units, size_t left) {
  uint64_t digits = 0;
  for (size_t k = 0; k < 4; ++k) {
    const char16_t c = k < left ? (Fold ? FoldAscii(units[k]) : units[k]) : 0;
    digits = (digits << 16) | c;
  }
  return digits;
}

template <bool Fold>
void FillDigits(TextKey* begin, TextKey* end, const std::vector<CellText>& cells, size_t depth) {
  // The keys' cells lie all over the table: fetch them a little ahead so the
  // memory waits overlap.
  constexpr ptrdiff_t kAhead = 16;
  for (TextKey* key = begin; key != end; ++key) {
#if defined(__GNUC__)
    if (end - key > 2 * kAhead) {
      __builtin_prefetch(&cells[key[2 * kAhead].row]);
      const CellText soon = cells[key[kAhead].row];
      if (soon.size() > depth) {
        __builtin_prefetch(soon.IsNarrow() ? static_cast<const void*>(soon.Bytes() + depth) : soon.Units() + depth);
      }
    }
#endif
    const CellText cell = cells[key->row];
    const size_t left = cell.size() - depth;
    key->digits =
        cell.IsNarrow() ? PackDigits<Fold>(cell.Bytes() + depth, left) : PackDigits<Fold>(cell.Units() + depth, left);
    key->left = static_cast<uint32_t>(std::min<size_t>(left, 5));
  }
}

template <bool Fold>
void SortTextKeys(TextKey* keys, size_t count, const std::vector<CellText>& cells) {
  struct Range {
    TextKey* begin;
    TextKey* end;
    size_t depth;
  };
  std::vector<Range> pending{{keys, keys + count, 0}};
  while (!pending.empty()) {
    const Range range = pending.back();
    pending.pop_back();
    FillDigits<Fold>(range.begin, range.end, cells, range.depth);
    std::sort(range.begin, range.end, DigitLess);
    // Ties that have more than four units left are decided further on.
    for (TextKey* run = range.begin; run != range.end;) {
      TextKey* next = run + 1;
      while (next != range.end && DigitEqual(*next, *run)) ++next;
      if (next - run > 1 && run->left > 4) pending.push_back({run, next, range.depth + 4});
      run = next;
    }
  }
}

// Number keys: each cell converted once, not at every comparison.
struct NumberKey {
  double value;
  uint32_t row;
};

// Powers of ten that a double holds exactly.
constexpr double kExactPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                        1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

template <typename Unit>
bool TextToFloat(const Unit* text, size_t size, double& value) {
  const char16_t separator = DecimalSeparator();
  size_t i = 0, n = size;
  while (i < n && IsNumberBlank(text[i])) ++i;
  while (n > i && IsNumberBlank(text[n - 1])) --n;
  if (i == n || n - i > 4096) return false;
  const size_t first = i;
  const bool negative = text[i] == u'-';
  if (text[i] == u'+' || text[i] == u'-') ++i;
  // The digits, with the separator at most once among them: [digitsBegin,
  // digitsEnd) with `fraction` digits after the separator.
  const size_t digitsBegin = i;
  uint64_t mantissa = 0;
  size_t digits = 0, fraction = 0;
  for (; i < n && IsDigit(text[i]); ++i, ++digits) mantissa = mantissa * 10 + (text[i] - u'0');
  if (i < n && text[i] == separator) {
    for (++i; i < n && IsDigit(text[i]); ++i, ++digits, ++fraction) mantissa = mantissa * 10 + (text[i] - u'0');
  }
  if (digits == 0) return false;
  const size_t digitsEnd = i;
  if (i == n && digits <= 15) {
    // Up to 15 digits and a power of ten are both exact, so one division
    // rounds correctly: the same value the full conversion gives.
    value = static_cast<double>(mantissa) / kExactPowersOfTen[fraction];
    if (negative) value = -value;
    return true;
  }
  if (i < n && (text[i] == u'e' || text[i] == u'E')) {
    ++i;
    if (i < n && (text[i] == u'+' || text[i] == u'-')) ++i;
    const size_t exponentBegin = i;
    while (i < n && IsDigit(text[i])) ++i;
    if (i == exponentBegin) return false;
  }
  if (i != n) return false;
  // Copied as ASCII with a point for the separator; '+' is left out because
  // the converter does not take it.
  std::string ascii;
  ascii.reserve(n - first);
  if (negative) ascii.push_back('-');
  for (size_t k = digitsBegin; k < n; ++k) {
    const char16_t c = text[k];
    if (k < digitsEnd && c == separator) {
      ascii.push_back('.');
    } else if (c != u'+') {
      ascii.push_back(static_cast<char>(c));
    }
  }
  double parsed = 0;
  const auto result = std::from_chars(ascii.data(), ascii.data() + ascii.size(), parsed);
  if (result.ec != std::errc() || result.ptr != ascii.data() + ascii.size()) return false;
  value = parsed;
  return true;
}

}  // namespace

bool TryTextToFloat(CellText text, double& value) {
  return text.IsNarrow() ? TextToFloat(text.Bytes(), text.size(), value)
                         : TextToFloat(text.Units(), text.size(), value);
}

int32_t NumericCompare(std::u16string_view a, std::u16string_view b) {
  double x = 0, y = 0;
  if (!TryTextToFloat(a, x)) x = 0;
  if (!TryTextToFloat(b, y)) y = 0;
  return x < y ? -1 : (x > y ? 1 : 0);
}

// The keys are large blocks: the sort moves keys all over them, and huge
// pages, where the system gives them, spare a page-table walk on most of
// those moves.
void NumberOrder(const std::vector<Record>& records, int32_t column, uint32_t* order) {
  const size_t count = records.size();
  RawBuffer<NumberKey> keyMemory;
  NumberKey* keys = keyMemory.Reserve(count);
  ForEachFetched(records, [&](const Record& record, size_t i) {
    double value = 0;
    if (!TryTextToFloat(record.At(column), value)) value = 0;
    keys[i] = {value, static_cast<uint32_t>(i)};
  });
  std::sort(keys, keys + count, [](const NumberKey& a, const NumberKey& b) { return a.value < b.value; });
  for (size_t i = 0; i < count; ++i) order[i] = keys[i].row;
}

void TextOrder(const std::vector<Record>& records, int32_t column, bool caseSensitive, uint32_t* order) {
  const size_t count = records.size();
  std::vector<CellText> cells(count);
  RawBuffer<TextKey> keyMemory;
  TextKey* keys = keyMemory.Reserve(count);
  ForEachFetched(records, [&](const Record& record, size_t i) {
    cells[i] = record.At(column);
    keys[i].row = static_cast<uint32_t>(i);
  });
  if (caseSensitive) {
    SortTextKeys<false>(keys, count, cells);
  } else {
    SortTextKeys<true>(keys, count, cells);
  }
  for (size_t i = 0; i < count; ++i) order[i] = keys[i].row;
}

}  // namespace qm
