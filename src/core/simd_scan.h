// Searches over UTF-16 text, eight units at a time where SSE2 is available
// (every x86-64 build), one at a time elsewhere, and over one-byte text
// (characters below U+0100), sixteen at a time. Internal to the CSV reader
// and writer.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace qm::simd {

#if defined(__SSE2__)
inline __m128i Load(const char16_t* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }
inline unsigned FirstUnit(int mask) { return static_cast<unsigned>(__builtin_ctz(static_cast<unsigned>(mask))) / 2; }

// The first unit of [p, end) that `hits` marks (all bits set in the units it
// matches, for the eight units at its argument), or `end`; at least eight
// units. Sixteen units a look; the last piece is the last eight units, with
// those already looked at masked off.
template <typename Hits>
inline const char16_t* Scan(const char16_t* p, const char16_t* end, Hits&& hits) {
  for (; end - p >= 16; p += 16) {
    const auto mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(hits(p), hits(p + 8))));
    if (mask) return p + __builtin_ctz(mask);
  }
  if (end - p >= 8) {
    const int mask = _mm_movemask_epi8(hits(p));
    if (mask) return p + FirstUnit(mask);
    p += 8;
  }
  if (p == end) return end;
  const char16_t* last = end - 8;
  const int mask = _mm_movemask_epi8(hits(last)) & ~((1 << (2 * (p - last))) - 1);
  return mask ? last + FirstUnit(mask) : end;
}
#endif

// The first unit equal to a, b or c, or `end`.
inline const char16_t* FindAny3(const char16_t* p, const char16_t* end, char16_t a, char16_t b, char16_t c) {
#if defined(__SSE2__)
  const __m128i va = _mm_set1_epi16(static_cast<short>(a));
  const __m128i vb = _mm_set1_epi16(static_cast<short>(b));
  const __m128i vc = _mm_set1_epi16(static_cast<short>(c));
  auto hits = [&](const char16_t* q) {
    const __m128i v = Load(q);
    return _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi16(v, va), _mm_cmpeq_epi16(v, vb)), _mm_cmpeq_epi16(v, vc));
  };
  if (end - p >= 8) return Scan(p, end, hits);
#endif
  for (; p < end; ++p) {
    if (*p == a || *p == b || *p == c) return p;
  }
  return end;
}

// The first unit equal to a, or `end`.
inline const char16_t* Find(const char16_t* p, const char16_t* end, char16_t a) {
#if defined(__SSE2__)
  const __m128i va = _mm_set1_epi16(static_cast<short>(a));
  auto hits = [&](const char16_t* q) { return _mm_cmpeq_epi16(Load(q), va); };
  if (end - p >= 8) return Scan(p, end, hits);
#endif
  for (; p < end; ++p) {
    if (*p == a) return p;
  }
  return end;
}

// The first unit with a code of 0 to 32 or equal to a or b, or `end`.
inline const char16_t* FindBlankOr2(const char16_t* p, const char16_t* end, char16_t a, char16_t b) {
#if defined(__SSE2__)
  const __m128i va = _mm_set1_epi16(static_cast<short>(a));
  const __m128i vb = _mm_set1_epi16(static_cast<short>(b));
  const __m128i space = _mm_set1_epi16(32);
  const __m128i zero = _mm_setzero_si128();
  auto hits = [&](const char16_t* q) {
    const __m128i v = Load(q);
    const __m128i low = _mm_cmpeq_epi16(_mm_subs_epu16(v, space), zero);
    return _mm_or_si128(low, _mm_or_si128(_mm_cmpeq_epi16(v, va), _mm_cmpeq_epi16(v, vb)));
  };
  if (end - p >= 8) return Scan(p, end, hits);
#endif
  for (; p < end; ++p) {
    if (*p <= 32 || *p == a || *p == b) return p;
  }
  return end;
}

// Copies units from `in` to `out` up to the first unit equal to `stop` or the
// `count` units, and returns how many were copied. It may store up to eight
// units past the copied ones, but never past out + count.
inline size_t CopyUntil(const char16_t* in, size_t count, char16_t* out, char16_t stop) {
  size_t k = 0;
#if defined(__SSE2__)
  const __m128i vs = _mm_set1_epi16(static_cast<short>(stop));
  while (count - k >= 8) {
    const __m128i v = Load(in + k);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + k), v);
    const int mask = _mm_movemask_epi8(_mm_cmpeq_epi16(v, vs));
    if (mask) return k + FirstUnit(mask);
    k += 8;
  }
#endif
  for (; k < count && in[k] != stop; ++k) out[k] = in[k];
  return k;
}

// One-byte text. A character above 0xFF cannot occur in it: searches for one
// look for a byte 0 in its place, which every caller looks for anyway.
inline uint8_t ByteOr0(char16_t c) { return c < 0x100 ? static_cast<uint8_t>(c) : 0; }

#if defined(__SSE2__)
inline __m128i Load(const uint8_t* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }

// The first byte of [p, end) that `hits` marks, sixteen bytes a look; the
// last piece is the last sixteen bytes, those already looked at masked off.
template <typename Hits>
inline const uint8_t* ScanBytes(const uint8_t* p, const uint8_t* end, Hits&& hits) {
  for (; end - p >= 16; p += 16) {
    const int mask = _mm_movemask_epi8(hits(p));
    if (mask) return p + __builtin_ctz(static_cast<unsigned>(mask));
  }
  if (p == end) return end;
  const uint8_t* last = end - 16;
  const int mask = _mm_movemask_epi8(hits(last)) & ~((1 << (p - last)) - 1);
  return mask ? last + __builtin_ctz(static_cast<unsigned>(mask)) : end;
}
#endif

inline const uint8_t* FindAny3(const uint8_t* p, const uint8_t* end, char16_t a, char16_t b, char16_t c) {
  const uint8_t x = ByteOr0(a), y = ByteOr0(b), z = ByteOr0(c);
#if defined(__SSE2__)
  const __m128i va = _mm_set1_epi8(static_cast<char>(x));
  const __m128i vb = _mm_set1_epi8(static_cast<char>(y));
  const __m128i vc = _mm_set1_epi8(static_cast<char>(z));
  auto hits = [&](const uint8_t* q) {
    const __m128i v = Load(q);
    return _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(v, va), _mm_cmpeq_epi8(v, vb)), _mm_cmpeq_epi8(v, vc));
  };
  if (end - p >= 16) return ScanBytes(p, end, hits);
#endif
  for (; p < end; ++p) {
    if (*p == x || *p == y || *p == z) return p;
  }
  return end;
}

inline const uint8_t* Find(const uint8_t* p, const uint8_t* end, char16_t a) {
  if (a > 0xFF) return end;
  const auto x = static_cast<uint8_t>(a);
#if defined(__SSE2__)
  const __m128i va = _mm_set1_epi8(static_cast<char>(x));
  auto hits = [&](const uint8_t* q) { return _mm_cmpeq_epi8(Load(q), va); };
  if (end - p >= 16) return ScanBytes(p, end, hits);
#endif
  for (; p < end; ++p) {
    if (*p == x) return p;
  }
  return end;
}

inline const uint8_t* FindBlankOr2(const uint8_t* p, const uint8_t* end, char16_t a, char16_t b) {
  const uint8_t x = ByteOr0(a), y = ByteOr0(b);
#if defined(__SSE2__)
  const __m128i va = _mm_set1_epi8(static_cast<char>(x));
  const __m128i vb = _mm_set1_epi8(static_cast<char>(y));
  const __m128i space = _mm_set1_epi8(32);
  const __m128i zero = _mm_setzero_si128();
  auto hits = [&](const uint8_t* q) {
    const __m128i v = Load(q);
    const __m128i low = _mm_cmpeq_epi8(_mm_subs_epu8(v, space), zero);
    return _mm_or_si128(low, _mm_or_si128(_mm_cmpeq_epi8(v, va), _mm_cmpeq_epi8(v, vb)));
  };
  if (end - p >= 16) return ScanBytes(p, end, hits);
#endif
  for (; p < end; ++p) {
    if (*p <= 32 || *p == x || *p == y) return p;
  }
  return end;
}

}  // namespace qm::simd
