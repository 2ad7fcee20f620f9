// The kernels for SSE2, part of every x86-64 processor.
#include "core/simd_kernels.h"

#if defined(__SSE2__)
#include <emmintrin.h>

#include "core/simd_kernels_body.h"

namespace qm::simd {

namespace {

struct Sse2 {
  using Reg = __m128i;
  static constexpr size_t kBytes = 16;
  static Reg Load(const void* p) { return _mm_loadu_si128(static_cast<const __m128i*>(p)); }
  static Reg Set8(uint8_t x) { return _mm_set1_epi8(static_cast<char>(x)); }
  static Reg Set16(char16_t x) { return _mm_set1_epi16(static_cast<short>(x)); }
  static Reg Or(Reg a, Reg b) { return _mm_or_si128(a, b); }
  static Reg Eq8(Reg a, Reg b) { return _mm_cmpeq_epi8(a, b); }
  static Reg Eq16(Reg a, Reg b) { return _mm_cmpeq_epi16(a, b); }
  static Reg AtMost8(Reg v, Reg limit) { return _mm_cmpeq_epi8(_mm_subs_epu8(v, limit), _mm_setzero_si128()); }
  static Reg AtMost16(Reg v, Reg limit) { return _mm_cmpeq_epi16(_mm_subs_epu16(v, limit), _mm_setzero_si128()); }
  static bool HighBytesZero(Reg v) {
    return _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_srli_epi16(v, 8), _mm_setzero_si128())) == 0xFFFF;
  }
  static uint32_t Mask(Reg v) { return static_cast<uint32_t>(_mm_movemask_epi8(v)); }
  static void Widen(const uint8_t* p, char16_t* out) {
    const Reg v = Load(p);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi8(v, _mm_setzero_si128()));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8), _mm_unpackhi_epi8(v, _mm_setzero_si128()));
  }
};

constexpr Kernels kSse2 = body::Kernels<Sse2>::Table(Level::Sse2, "sse2");

}  // namespace

const Kernels* Sse2Kernels() noexcept { return &kSse2; }

}  // namespace qm::simd

#else

const qm::simd::Kernels* qm::simd::Sse2Kernels() noexcept { return nullptr; }

#endif
