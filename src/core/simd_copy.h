// Short copies and loads done inline. Most texts the table copies are a
// record's or a cell's, tens of bytes long, and a memcpy of a size known only
// at run time is a call into the C runtime: on Windows a call into its DLL,
// and under Wine into a general routine that is slow for such sizes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace qm {

// Copies `n` bytes from `from` to `to`, which do not overlap: a few moves
// that may overlap one another for up to 256 bytes, memcpy beyond.
inline void CopyBytes(void* to, const void* from, size_t n) noexcept {
  auto* d = static_cast<unsigned char*>(to);
  const auto* s = static_cast<const unsigned char*>(from);
  auto move = [&]<typename Word>(Word, size_t at) {
    Word w;
    std::memcpy(&w, s + at, sizeof w);
    std::memcpy(d + at, &w, sizeof w);
  };
#if defined(__SSE2__)
  if (n >= 16 && n <= 256) {
    auto move16 = [&](size_t at) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(d + at), _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + at)));
    };
    for (size_t k = 0; k + 16 < n; k += 16) move16(k);
    move16(n - 16);
    return;
  }
#endif
  if (n >= 16) {
    std::memcpy(d, s, n);
  } else if (n >= 8) {
    move(uint64_t{}, 0);
    move(uint64_t{}, n - 8);
  } else if (n >= 4) {
    move(uint32_t{}, 0);
    move(uint32_t{}, n - 4);
  } else if (n >= 2) {
    move(uint16_t{}, 0);
    move(uint16_t{}, n - 2);
  } else if (n == 1) {
    *d = *s;
  }
}

// The `n` bytes at `from` (at most 8) as the low bytes of a word in the
// processor's order, the rest 0: what a memcpy of them into a zeroed word
// gives.
inline uint64_t LoadShort(const void* from, size_t n) noexcept {
  const auto* s = static_cast<const unsigned char*>(from);
  auto load = [&]<typename Word>(Word, size_t at) {
    Word w;
    std::memcpy(&w, s + at, sizeof w);
    return uint64_t{w};
  };
  // Two loads that may overlap: the second one's bytes are shifted to their
  // places, where those they share with the first are the same.
  if (n >= 4) return load(uint32_t{}, 0) | load(uint32_t{}, n - 4) << (8 * (n - 4));
  if (n >= 2) return load(uint16_t{}, 0) | load(uint16_t{}, n - 2) << (8 * (n - 2));
  return n ? s[0] : 0;
}

}  // namespace qm
