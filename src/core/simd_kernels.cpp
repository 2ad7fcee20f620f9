#include "core/simd_kernels.h"

#include <cstdlib>
#include <cstring>
#include <initializer_list>

namespace qm::simd {

namespace {

// The reference: one byte or unit at a time.
namespace scalar {

bool IsAscii(const uint8_t* p, size_t n) {
  for (size_t k = 0; k < n; ++k) {
    if (p[k] >= 0x80) return false;
  }
  return true;
}

bool FitsLatin1(const char16_t* p, size_t n) {
  for (size_t k = 0; k < n; ++k) {
    if (p[k] >= 0x100) return false;
  }
  return true;
}

void WidenLatin1(const uint8_t* p, size_t n, char16_t* out) {
  for (size_t k = 0; k < n; ++k) out[k] = p[k];
}

const uint8_t* FindByte(const uint8_t* p, const uint8_t* end, uint8_t a) {
  while (p < end && *p != a) ++p;
  return p;
}

size_t CountByte(const uint8_t* p, size_t n, uint8_t a) {
  size_t count = 0;
  for (size_t k = 0; k < n; ++k) count += p[k] == a;
  return count;
}

template <typename Unit>
const Unit* FindAny3(const Unit* p, const Unit* end, Unit a, Unit b, Unit c) {
  while (p < end && *p != a && *p != b && *p != c) ++p;
  return p;
}

template <typename Unit>
const Unit* FindBlankOr2(const Unit* p, const Unit* end, Unit a, Unit b) {
  while (p < end && (*p > 32) && *p != a && *p != b) ++p;
  return p;
}

}  // namespace scalar

constexpr Kernels kScalar = {Level::Scalar,
                             "scalar",
                             &scalar::IsAscii,
                             &scalar::FitsLatin1,
                             &scalar::WidenLatin1,
                             &scalar::FindByte,
                             &scalar::CountByte,
                             &scalar::FindAny3<uint8_t>,
                             &scalar::FindAny3<char16_t>,
                             &scalar::FindBlankOr2<uint8_t>,
                             &scalar::FindBlankOr2<char16_t>};

bool ProcessorHas(Level level) noexcept {
#if defined(__x86_64__) || defined(__i386__)
  // libgcc reads CPUID once; "avx2" also requires the system to save the
  // wide registers (XGETBV), as it does on every current Windows and Linux.
  __builtin_cpu_init();
  switch (level) {
    case Level::Scalar: return true;
    case Level::Sse2: return __builtin_cpu_supports("sse2");
    case Level::Avx2: return __builtin_cpu_supports("avx2");
  }
  return false;
#else
  return level == Level::Scalar;
#endif
}

const Kernels& Choose() noexcept {
  Level widest = Level::Avx2;
  if (const char* asked = std::getenv("QMCSV_SIMD")) {
    if (std::strcmp(asked, "scalar") == 0) widest = Level::Scalar;
    if (std::strcmp(asked, "sse2") == 0) widest = Level::Sse2;
  }
  for (Level level : {Level::Avx2, Level::Sse2}) {
    if (level > widest) continue;
    if (const Kernels* k = KernelsFor(level)) return *k;
  }
  return kScalar;
}

}  // namespace

const Kernels* KernelsFor(Level level) noexcept {
  if (!ProcessorHas(level)) return nullptr;
  switch (level) {
    case Level::Scalar: return &kScalar;
    case Level::Sse2: return Sse2Kernels();
    case Level::Avx2: return Avx2Kernels();
  }
  return nullptr;
}

const Kernels& Active() noexcept {
  static const Kernels& chosen = Choose();
  return chosen;
}

}  // namespace qm::simd
