// Searches and checks over long runs of text, compiled once per instruction
// set (SSE2, which every x86-64 processor has, and AVX2) plus a plain
// reference, and chosen once, by what the processor reports, when first used.
// Every variant gives the same results; the reference is also the fallback
// where neither instruction set exists. Calls go through a table of function
// pointers, so they pay for a call: for short texts (a cell) the inline
// code of simd_scan.h, simd_split.h, simd_join.h and latin1.h does better.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qm::simd {

enum class Level { Scalar, Sse2, Avx2 };

struct Kernels {
  Level level;
  const char* name;  // "scalar", "sse2", "avx2"
  // Whether every byte of [p, p + n) is below 0x80.
  bool (*isAscii)(const uint8_t* p, size_t n);
  // Whether every unit of [p, p + n) is below 0x100.
  bool (*fitsLatin1)(const char16_t* p, size_t n);
  // Each byte of [p, p + n) as its unit, into out[0, n).
  void (*widenLatin1)(const uint8_t* p, size_t n, char16_t* out);
  // The first byte of [p, end) equal to a, or `end`.
  const uint8_t* (*findByte)(const uint8_t* p, const uint8_t* end, uint8_t a);
  // How many bytes of [p, p + n) equal a.
  size_t (*countByte)(const uint8_t* p, size_t n, uint8_t a);
  // The first byte or unit equal to a, b or c, or `end`.
  const uint8_t* (*findAny3Bytes)(const uint8_t* p, const uint8_t* end, uint8_t a, uint8_t b, uint8_t c);
  const char16_t* (*findAny3Units)(const char16_t* p, const char16_t* end, char16_t a, char16_t b, char16_t c);
  // The first byte or unit with a code of 0 to 32 or equal to a or b, or `end`.
  const uint8_t* (*findBlankOr2Bytes)(const uint8_t* p, const uint8_t* end, uint8_t a, uint8_t b);
  const char16_t* (*findBlankOr2Units)(const char16_t* p, const char16_t* end, char16_t a, char16_t b);
};

// The variant of a level, or nullptr when this processor (or build) lacks it.
const Kernels* KernelsFor(Level level) noexcept;

// The variant in use: the widest this processor runs, chosen at the first
// call. The environment variable QMCSV_SIMD (scalar, sse2 or avx2) asks for
// a narrower one, to compare them or to rule one out; a level the processor
// lacks is not taken.
const Kernels& Active() noexcept;

// The variants as each instruction set's file defines them (nullptr where
// the build has none).
const Kernels* Sse2Kernels() noexcept;
const Kernels* Avx2Kernels() noexcept;

}  // namespace qm::simd
