// Text whose characters all lie below U+0100, kept one byte a character: the
// byte is the character's code (ISO 8859-1). Most tables hold little else, and
// so kept they take half the memory of UTF-16. Eight or sixteen units a step
// where SSE2 is available (every x86-64 build).
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace qm {

#if defined(__SSE2__)
namespace latin1 {
inline __m128i Load(const void* p) { return _mm_loadu_si128(static_cast<const __m128i*>(p)); }
inline __m128i Load8(const void* p) { return _mm_loadl_epi64(static_cast<const __m128i*>(p)); }
}  // namespace latin1
#endif

// Whether every unit of [p, p + n) is below 0x100. Texts of eight units or
// more are read in pieces of eight, the last one overlapping the one before.
inline bool FitsLatin1(const char16_t* p, size_t n) noexcept {
#if defined(__SSE2__)
  if (n >= 8) {
    __m128i seen = latin1::Load(p + n - 8);
    for (size_t k = 0; k + 8 < n; k += 8) seen = _mm_or_si128(seen, latin1::Load(p + k));
    // The high byte of every unit, all in the odd bytes of `seen`.
    return _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_srli_epi16(seen, 8), _mm_setzero_si128())) == 0xFFFF;
  }
#endif
  char16_t high = 0;
  for (size_t k = 0; k < n; ++k) high |= p[k];
  return high < 0x100;
}

// Each unit of [p, p + n) as its byte; every unit must fit. Pieces overlap
// as in FitsLatin1, storing the same bytes twice.
inline void NarrowLatin1(const char16_t* p, size_t n, uint8_t* out) noexcept {
#if defined(__SSE2__)
  if (n >= 8) {
    for (size_t k = 0; k + 8 < n; k += 8) {
      const __m128i v = latin1::Load(p + k);
      _mm_storel_epi64(reinterpret_cast<__m128i*>(out + k), _mm_packus_epi16(v, v));
    }
    const __m128i v = latin1::Load(p + n - 8);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out + n - 8), _mm_packus_epi16(v, v));
    return;
  }
#endif
  for (size_t k = 0; k < n; ++k) out[k] = static_cast<uint8_t>(p[k]);
}

// Each byte of [p, p + n) as its unit.
inline void WidenLatin1(const uint8_t* p, size_t n, char16_t* out) noexcept {
#if defined(__SSE2__)
  if (n >= 8) {
    const __m128i zero = _mm_setzero_si128();
    for (size_t k = 0; k + 8 < n; k += 8) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out + k), _mm_unpacklo_epi8(latin1::Load8(p + k), zero));
    }
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + n - 8), _mm_unpacklo_epi8(latin1::Load8(p + n - 8), zero));
    return;
  }
#endif
  for (size_t k = 0; k < n; ++k) out[k] = p[k];
}

}  // namespace qm
