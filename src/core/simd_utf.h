// The ASCII runs of the UTF-8 codecs, sixteen bytes or units a step: a run
// is widened or narrowed whole and its ASCII prefix counted, so the codec
// goes on from the first other character.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>

namespace qm::simd {

// Widens the 16 bytes at `in` to 16 units at `out` and returns how many of
// them, from the first, are ASCII (16: all).
inline size_t WidenAscii16(const char* in, char16_t* out) noexcept {
  const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
  const __m128i zero = _mm_setzero_si128();
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi8(v, zero));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8), _mm_unpackhi_epi8(v, zero));
  const auto high = static_cast<unsigned>(_mm_movemask_epi8(v));
  return high ? static_cast<size_t>(__builtin_ctz(high)) : 16;
}

// Narrows the 16 units at `in` to 16 bytes at `out` (saturated: only the
// ASCII ones are right) and returns how many of them, from the first, are
// ASCII (16: all).
inline size_t NarrowAscii16(const char16_t* in, uint8_t* out) noexcept {
  const __m128i high = _mm_set1_epi16(static_cast<short>(0xFF80));
  const __m128i zero = _mm_setzero_si128();
  const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
  const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 8));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(a, b));
  const auto ascii = static_cast<unsigned>(_mm_movemask_epi8(
      _mm_packs_epi16(_mm_cmpeq_epi16(_mm_and_si128(a, high), zero), _mm_cmpeq_epi16(_mm_and_si128(b, high), zero))));
  return ascii == 0xFFFF ? 16 : static_cast<size_t>(__builtin_ctz(~ascii));
}

}  // namespace qm::simd

#endif
