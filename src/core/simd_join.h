// The copies that join cells into a line: a cell's text into UTF-16 units,
// bytes or UTF-8, sixteen bytes a store where SSE2 is available (every
// x86-64 build), one unit at a time elsewhere. Stores may run past the copy
// by up to kCopyOverrun units, which the line's room allows and what follows
// overwrites; loads may run past the cell, never past `limit`, the end of
// the text the cell lies in. Inline, as most cells are short.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/simd_copy.h"
#include "core/simd_scan.h"

namespace qm::simd {

inline constexpr size_t kCopyOverrun = 16;

// UTF-16 units, sixteen or eight a store.
inline char16_t* CopyRun(const char16_t* p, const char16_t* end, char16_t* out, const char16_t* limit) noexcept {
  size_t n = static_cast<size_t>(end - p);
#if defined(__SSE2__)
  auto store = [](char16_t* to, const char16_t* from) { _mm_storeu_si128(reinterpret_cast<__m128i*>(to), Load(from)); };
  if (n <= 16 && limit - p >= 16) {
    // Most cells: two loads and two stores, whatever their length.
    store(out, p);
    store(out + 8, p + 8);
    return out + n;
  }
  for (; n >= 8; n -= 8, p += 8, out += 8) store(out, p);
  if (n > 0 && limit - p >= 8) {
    store(out, p);
    return out + n;
  }
#else
  (void)limit;
#endif
  for (; n > 0; --n) *out++ = *p++;
  return out;
}

// One-byte text widened to units, sixteen a step.
inline char16_t* CopyRun(const uint8_t* p, const uint8_t* end, char16_t* out, const uint8_t* limit) noexcept {
  size_t n = static_cast<size_t>(end - p);
#if defined(__SSE2__)
  const __m128i zero = _mm_setzero_si128();
  auto widen16 = [&](char16_t* to, const uint8_t* from) {
    const __m128i v = Load(from);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_unpacklo_epi8(v, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to + 8), _mm_unpackhi_epi8(v, zero));
  };
  for (; n >= 16; n -= 16, p += 16, out += 16) widen16(out, p);
  if (n > 0 && limit - p >= 16) {
    widen16(out, p);
    return out + n;
  }
#else
  (void)limit;
#endif
  for (; n > 0; --n) *out++ = *p++;
  return out;
}

// One-byte text as bytes.
inline uint8_t* CopyRun(const uint8_t* p, const uint8_t* end, uint8_t* out, const uint8_t* limit) noexcept {
  size_t n = static_cast<size_t>(end - p);
#if defined(__SSE2__)
  auto store = [](uint8_t* to, const uint8_t* from) { _mm_storeu_si128(reinterpret_cast<__m128i*>(to), Load(from)); };
  for (; n >= 16; n -= 16, p += 16, out += 16) store(out, p);
  if (n > 0 && limit - p >= 16) {
    store(out, p);
    return out + n;
  }
#else
  (void)limit;
#endif
  CopyBytes(out, p, n);
  return out + n;
}

// One-byte text to UTF-8, one character at a time. No branch on the
// character: both bytes of the two-byte form are stored for every one, the
// lead byte replaced by the character itself below U+0080, and the output
// moves on by one or two; the second byte stored for an ASCII character is
// overwritten by what follows, and lies within the room a line is given
// (two bytes a character).
inline char8_t* ExpandLatin1(const uint8_t* p, size_t n, char8_t* out) noexcept {
  for (; n > 0; --n) {
    const uint32_t c = *p++;
    const uint32_t wide = c >> 7;  // 1 from U+0080 on
    const uint32_t lead = c ^ ((c ^ (0xC0 | (c >> 6))) & (0u - wide));
    out[0] = static_cast<char8_t>(lead);
    out[1] = static_cast<char8_t>(0x80 | (c & 0x3F));
    out += 1 + wide;
  }
  return out;
}

// One-byte text to UTF-8: a run of ASCII is copied sixteen bytes a store,
// any other character becomes its two bytes.
inline char8_t* CopyRun(const uint8_t* p, const uint8_t* end, char8_t* out, const uint8_t* limit) noexcept {
  size_t n = static_cast<size_t>(end - p);
#if defined(__SSE2__)
  for (; n >= 16; n -= 16, p += 16) {
    const __m128i v = Load(p);
    if (_mm_movemask_epi8(v) == 0) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out), v);
      out += 16;
    } else {
      out = ExpandLatin1(p, 16, out);
    }
  }
  if (n > 0 && limit - p >= 16) {
    const __m128i v = Load(p);
    if ((_mm_movemask_epi8(v) & ((1 << n) - 1)) == 0) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out), v);
      return out + n;
    }
  }
#else
  (void)limit;
#endif
  return ExpandLatin1(p, n, out);
}

}  // namespace qm::simd
