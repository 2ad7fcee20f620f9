#include "core/case_fold.h"

#include <cstdint>

namespace qm {

namespace {

#include "core/case_fold_table.inc"

constexpr char32_t FoldAscii(char32_t c) noexcept { return c - U'A' < 26u ? c + 32 : c; }

constexpr char32_t FoldTable(char32_t cp) noexcept {
  if (cp >= kFoldLimit) return cp;
  const unsigned row = unsigned{kFoldBlock[cp >> kFoldBlockShift]} << kFoldBlockShift;
  const int32_t delta = kFoldDelta[kFoldDeltaIndex[row + (cp & ((1u << kFoldBlockShift) - 1))]];
  return static_cast<char32_t>(static_cast<int32_t>(cp) + delta);
}

constexpr bool IsHighSurrogate(char16_t c) noexcept { return c >= 0xD800 && c <= 0xDBFF; }
constexpr bool IsLowSurrogate(char16_t c) noexcept { return c >= 0xDC00 && c <= 0xDFFF; }

static_assert(FoldTable(U'\u00C4') == U'\u00E4');
static_assert(FoldTable(U'\u03A3') == U'\u03C3' && FoldTable(U'\u03C2') == U'\u03C3');
static_assert(FoldTable(U'\u00DF') == U'\u00DF');

}  // namespace

char32_t FoldCase(char32_t cp) noexcept { return cp < 0x80 ? FoldAscii(cp) : FoldTable(cp); }

void FoldCase(const char16_t* in, size_t count, char16_t* out) noexcept {
  size_t i = 0;
  while (i < count) {
    const char16_t c = in[i];
    if (c < 0x80) {
      // Most cells are ASCII: one compare and one add per unit.
      out[i++] = static_cast<char16_t>(FoldAscii(c));
    } else if (IsHighSurrogate(c) && i + 1 < count && IsLowSurrogate(in[i + 1])) {
      const char32_t cp = 0x10000 + ((char32_t{c} - 0xD800) << 10) + (char32_t{in[i + 1]} - 0xDC00);
      // The table keeps supplementary code points in their plane, so the pair
      // stays a pair of the same length.
      const char32_t folded = FoldTable(cp) - 0x10000;
      out[i] = static_cast<char16_t>(0xD800 + (folded >> 10));
      out[i + 1] = static_cast<char16_t>(0xDC00 + (folded & 0x3FF));
      i += 2;
    } else {
      // BMP letters, and lone surrogates, which have no folding and stay as they are.
      out[i++] = static_cast<char16_t>(FoldTable(c));
    }
  }
}

void FoldCase(std::u16string_view in, std::u16string& out) {
  out.resize(in.size());
  FoldCase(in.data(), in.size(), out.data());
}

}  // namespace qm
