// The kernels of simd_kernels.h written once over the vector operations of an
// instruction set, `V` (simd_kernels_sse2.cpp, simd_kernels_avx2.cpp). Each of
// those files includes this after its own intrinsics, compiled for its own
// target; nothing here calls a function of another file, so no code built
// for one instruction set ends up called from another's.
//
// V provides: Reg, kBytes (a register's bytes), Load, Store, Set8, Set16, Or,
// Eq8, Eq16, AtMost8 / AtMost16 (all bits set where a byte / unit is at most
// the other's, unsigned), HighBytesZero (whether every unit's high byte is
// 0), Mask (one bit per byte) and Widen (kBytes bytes stored as kBytes units).
#pragma once

namespace qm::simd::body {

template <class V>
struct Kernels {
  using Reg = typename V::Reg;
  static constexpr size_t kBytes = V::kBytes;
  static constexpr size_t kUnits = kBytes / 2;

  static unsigned Ctz(uint32_t m) { return static_cast<unsigned>(__builtin_ctz(m)); }

  // The first byte or unit of [p, end) that `hits` (a mask of kBytes bits,
  // one per byte, for the register at its argument) marks, or `end`; texts
  // shorter than a register go one by one through `one`. The last piece is
  // the last register's worth, those already looked at masked off.
  template <typename Unit, class Hits, class One>
  static const Unit* Scan(const Unit* p, const Unit* end, Hits hits, One one) {
    constexpr size_t kPer = kBytes / sizeof(Unit);
    constexpr unsigned kBits = sizeof(Unit);  // mask bits a unit
    if (static_cast<size_t>(end - p) < kPer) {
      for (; p < end; ++p) {
        if (one(*p)) return p;
      }
      return end;
    }
    for (; static_cast<size_t>(end - p) >= kPer; p += kPer) {
      if (const uint32_t m = hits(p)) return p + Ctz(m) / kBits;
    }
    if (p == end) return end;
    const Unit* last = end - kPer;
    const uint32_t m = hits(last) & ~((uint32_t{1} << (kBits * (p - last))) - 1);
    return m ? last + Ctz(m) / kBits : end;
  }

  // The OR of every unit of [p, p + n), one by one.
  template <typename Unit>
  static Unit OrEach(const Unit* p, size_t n) {
    Unit seen = 0;
    for (size_t k = 0; k < n; ++k) seen |= p[k];
    return seen;
  }

  // The OR of [p, p + n) a register at a time, n at least a register's
  // worth; the last piece overlaps what was already seen.
  template <typename Unit>
  static Reg OrAll(const Unit* p, size_t n) {
    constexpr size_t kPer = kBytes / sizeof(Unit);
    Reg seen = V::Load(p + n - kPer);
    for (size_t k = 0; k + kPer < n; k += kPer) seen = V::Or(seen, V::Load(p + k));
    return seen;
  }

  static bool IsAscii(const uint8_t* p, size_t n) {
    return n < kBytes ? OrEach(p, n) < 0x80 : V::Mask(OrAll(p, n)) == 0;
  }

  static bool FitsLatin1(const char16_t* p, size_t n) {
    return n < kUnits ? OrEach(p, n) < 0x100 : V::HighBytesZero(OrAll(p, n));
  }

  static void WidenLatin1(const uint8_t* p, size_t n, char16_t* out) {
    if (n < kBytes) {
      for (size_t k = 0; k < n; ++k) out[k] = p[k];
      return;
    }
    // The last piece overlaps, storing the same units twice.
    for (size_t k = 0; k + kBytes < n; k += kBytes) V::Widen(p + k, out + k);
    V::Widen(p + n - kBytes, out + n - kBytes);
  }

  static const uint8_t* FindByte(const uint8_t* p, const uint8_t* end, uint8_t a) {
    const Reg va = V::Set8(a);
    return Scan(
        p, end, [&](const uint8_t* q) { return V::Mask(V::Eq8(V::Load(q), va)); }, [&](uint8_t c) { return c == a; });
  }

  static size_t CountByte(const uint8_t* p, size_t n, uint8_t a) {
    const Reg va = V::Set8(a);
    size_t count = 0;
    size_t k = 0;
    for (; k + kBytes <= n; k += kBytes) {
      count += static_cast<size_t>(__builtin_popcount(V::Mask(V::Eq8(V::Load(p + k), va))));
    }
    for (; k < n; ++k) count += p[k] == a;
    return count;
  }

  static const uint8_t* FindAny3Bytes(const uint8_t* p, const uint8_t* end, uint8_t a, uint8_t b, uint8_t c) {
    const Reg va = V::Set8(a), vb = V::Set8(b), vc = V::Set8(c);
    return Scan(
        p, end,
        [&](const uint8_t* q) {
          const Reg v = V::Load(q);
          return V::Mask(V::Or(V::Or(V::Eq8(v, va), V::Eq8(v, vb)), V::Eq8(v, vc)));
        },
        [&](uint8_t x) { return x == a || x == b || x == c; });
  }

  static const char16_t* FindAny3Units(const char16_t* p, const char16_t* end, char16_t a, char16_t b, char16_t c) {
    const Reg va = V::Set16(a), vb = V::Set16(b), vc = V::Set16(c);
    return Scan(
        p, end,
        [&](const char16_t* q) {
          const Reg v = V::Load(q);
          return V::Mask(V::Or(V::Or(V::Eq16(v, va), V::Eq16(v, vb)), V::Eq16(v, vc)));
        },
        [&](char16_t x) { return x == a || x == b || x == c; });
  }

  static const uint8_t* FindBlankOr2Bytes(const uint8_t* p, const uint8_t* end, uint8_t a, uint8_t b) {
    const Reg va = V::Set8(a), vb = V::Set8(b), space = V::Set8(32);
    return Scan(
        p, end,
        [&](const uint8_t* q) {
          const Reg v = V::Load(q);
          return V::Mask(V::Or(V::AtMost8(v, space), V::Or(V::Eq8(v, va), V::Eq8(v, vb))));
        },
        [&](uint8_t x) { return x <= 32 || x == a || x == b; });
  }

  static const char16_t* FindBlankOr2Units(const char16_t* p, const char16_t* end, char16_t a, char16_t b) {
    const Reg va = V::Set16(a), vb = V::Set16(b), space = V::Set16(32);
    return Scan(
        p, end,
        [&](const char16_t* q) {
          const Reg v = V::Load(q);
          return V::Mask(V::Or(V::AtMost16(v, space), V::Or(V::Eq16(v, va), V::Eq16(v, vb))));
        },
        [&](char16_t x) { return x <= 32 || x == a || x == b; });
  }

  static constexpr qm::simd::Kernels Table(Level level, const char* name) {
    return {level,      name,           &IsAscii,       &FitsLatin1,        &WidenLatin1,      &FindByte,
            &CountByte, &FindAny3Bytes, &FindAny3Units, &FindBlankOr2Bytes, &FindBlankOr2Units};
  }
};

}  // namespace qm::simd::body
