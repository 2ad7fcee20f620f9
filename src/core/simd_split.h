// The vector work of splitting UTF-8 lines into cells: which of 64 bytes are
// delimiters and which may end a run of plain text, and copies of ASCII
// runs into UTF-16 units or bytes. SSE2 where it is available (every x86-64
// build), one byte at a time elsewhere. They work on a cell or a few bytes
// at a time, so they are inline: a call through the kernel table
// (simd_kernels.h) would cost more than they do.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace qm::simd {

// Where the 64 bytes at `p` hold the delimiter (one bit a byte), and the
// bytes other than it that may end a run of plain text: the quote and codes
// 0 to 13 (CR, LF and 0 among them) and bytes above 0x7F. A delimiter below
// 14, such as the tab, counts as a delimiter only.
struct PieceMasks {
  uint64_t delimiters = 0;
  uint64_t others = 0;
};

// The reference, one byte at a time.
inline PieceMasks MaskPieceScalar(const uint8_t* p, uint8_t delimiter, uint8_t quote) noexcept {
  PieceMasks m;
  for (unsigned k = 0; k < 64; ++k) {
    const uint8_t c = p[k];
    if (c == delimiter) {
      m.delimiters |= uint64_t{1} << k;
    } else if (c < 14 || c >= 0x80 || c == quote) {
      m.others |= uint64_t{1} << k;
    }
  }
  return m;
}

// The same sixteen bytes a compare, with the compared values set up once.
class PieceMasker {
 public:
  PieceMasker(uint8_t delimiter, uint8_t quote) noexcept
#if defined(__SSE2__)
      : delimiter_(_mm_set1_epi8(static_cast<char>(delimiter))),
        quote_(_mm_set1_epi8(static_cast<char>(quote))){}
#else
      : delimiter_(delimiter), quote_(quote) {
  }
#endif

        void Mask(const uint8_t* p, PieceMasks& m) const noexcept {
#if defined(__SSE2__)
    // Codes 0 to 13 and bytes above 0x7F in one signed compare.
    const __m128i fourteen = _mm_set1_epi8(14);
    m.delimiters = 0;
    m.others = 0;
    for (int k = 0; k < 64; k += 16) {
      const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + k));
      const __m128i d = _mm_cmpeq_epi8(v, delimiter_);
      const __m128i other = _mm_andnot_si128(d, _mm_or_si128(_mm_cmplt_epi8(v, fourteen), _mm_cmpeq_epi8(v, quote_)));
      m.delimiters |= uint64_t{static_cast<uint16_t>(_mm_movemask_epi8(d))} << k;
      m.others |= uint64_t{static_cast<uint16_t>(_mm_movemask_epi8(other))} << k;
    }
#else
    m = MaskPieceScalar(p, delimiter_, quote_);
#endif
  }

 private:
#if defined(__SSE2__)
  __m128i delimiter_;
  __m128i quote_;
#else
  uint8_t delimiter_;
  uint8_t quote_;
#endif
};

#if defined(__SSE2__)
// Stores sixteen ASCII bytes as sixteen units, or as themselves.
inline void PutAscii16(__m128i v, char16_t* to) noexcept {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_unpacklo_epi8(v, _mm_setzero_si128()));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to + 8), _mm_unpackhi_epi8(v, _mm_setzero_si128()));
}
inline void PutAscii16(__m128i v, uint8_t* to) noexcept { _mm_storeu_si128(reinterpret_cast<__m128i*>(to), v); }
#endif

// Copies the ASCII bytes [p, p + n) to `o` (n > 0) sixteen at a time,
// reading and storing up to fifteen past them.
template <typename Unit>
inline void CopyAscii(const uint8_t* p, size_t n, Unit* o) noexcept {
#if defined(__SSE2__)
  PutAscii16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)), o);
  if (n > 16) {
    for (size_t k = 16; k < n; k += 16) PutAscii16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p + k)), o + k);
  }
#else
  for (size_t k = 0; k < n; ++k) o[k] = p[k];
#endif
}

// Copies ASCII bytes to `o` until a byte that is `stop`, CR, LF, 0 or
// above 0x7F, or `end`, advancing both. Sixteen bytes are stored at a time
// whatever their use; output never runs ahead of input by more than the
// room allows.
template <typename Unit>
inline void CopyAsciiUntil(const uint8_t*& s, const uint8_t* end, Unit*& o, uint8_t stop) noexcept {
#if defined(__SSE2__)
  const __m128i vs = _mm_set1_epi8(static_cast<char>(stop));
  const __m128i cr = _mm_set1_epi8('\r');
  const __m128i lf = _mm_set1_epi8('\n');
  const __m128i zero = _mm_setzero_si128();
  while (end - s >= 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s));
    PutAscii16(v, o);
    const __m128i hit = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(v, vs), _mm_cmpeq_epi8(v, zero)),
                                     _mm_or_si128(_mm_cmpeq_epi8(v, cr), _mm_cmpeq_epi8(v, lf)));
    const int mask = _mm_movemask_epi8(_mm_or_si128(hit, v));  // the sign bit marks bytes above 0x7F
    if (mask) {
      const int k = __builtin_ctz(static_cast<unsigned>(mask));
      s += k;
      o += k;
      return;
    }
    s += 16;
    o += 16;
  }
#endif
  while (s < end && *s < 0x80 && *s != stop && *s != '\n' && *s != '\r' && *s != 0) *o++ = *s++;
}

}  // namespace qm::simd
