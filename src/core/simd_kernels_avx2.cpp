// The kernels for AVX2: this file alone is compiled for it (see
// CMakeLists.txt), and its code runs only where the processor has it.
#include "core/simd_kernels.h"

#if defined(__AVX2__)
#include <immintrin.h>

#include "core/simd_kernels_body.h"

namespace qm::simd {

namespace {

struct Avx2 {
  using Reg = __m256i;
  static constexpr size_t kBytes = 32;
  static Reg Load(const void* p) { return _mm256_loadu_si256(static_cast<const __m256i*>(p)); }
  static Reg Set8(uint8_t x) { return _mm256_set1_epi8(static_cast<char>(x)); }
  static Reg Set16(char16_t x) { return _mm256_set1_epi16(static_cast<short>(x)); }
  static Reg Or(Reg a, Reg b) { return _mm256_or_si256(a, b); }
  static Reg Eq8(Reg a, Reg b) { return _mm256_cmpeq_epi8(a, b); }
  static Reg Eq16(Reg a, Reg b) { return _mm256_cmpeq_epi16(a, b); }
  static Reg AtMost8(Reg v, Reg limit) { return _mm256_cmpeq_epi8(_mm256_min_epu8(v, limit), v); }
  static Reg AtMost16(Reg v, Reg limit) { return _mm256_cmpeq_epi16(_mm256_min_epu16(v, limit), v); }
  static bool HighBytesZero(Reg v) { return _mm256_testz_si256(v, _mm256_set1_epi16(static_cast<short>(0xFF00))) != 0; }
  static uint32_t Mask(Reg v) { return static_cast<uint32_t>(_mm256_movemask_epi8(v)); }
  static void Widen(const uint8_t* p, char16_t* out) {
    const __m128i lo = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i hi = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), _mm256_cvtepu8_epi16(lo));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + 16), _mm256_cvtepu8_epi16(hi));
  }
};

constexpr Kernels kAvx2 = body::Kernels<Avx2>::Table(Level::Avx2, "avx2");

}  // namespace

const Kernels* Avx2Kernels() noexcept { return &kAvx2; }

}  // namespace qm::simd

#else

const qm::simd::Kernels* qm::simd::Avx2Kernels() noexcept { return nullptr; }

#endif
