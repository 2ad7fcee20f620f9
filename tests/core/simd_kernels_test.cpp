#include "core/simd_kernels.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace qm::simd {
namespace {

// Every variant this processor runs, against the reference, on texts of every
// length up to a few registers, around 4 KiB, and at every offset from a
// 32-byte boundary, each text ending where its buffer ends (the sanitizer
// build catches a read past it). Their bytes come from a few values, the
// searched ones among them, so that hits fall anywhere, and from the ends of
// each range (0x7F/0x80, 0xFF/0x100, 32/33).
class Variants : public testing::TestWithParam<Level> {};

std::vector<Level> Available() {
  std::vector<Level> levels;
  for (Level level : {Level::Sse2, Level::Avx2}) {
    if (KernelsFor(level)) levels.push_back(level);
  }
  return levels;
}

INSTANTIATE_TEST_SUITE_P(Levels, Variants, testing::ValuesIn(Available()),
                         [](const testing::TestParamInfo<Level>& info) { return KernelsFor(info.param)->name; });

std::vector<size_t> Lengths() {
  std::vector<size_t> lengths;
  for (size_t n = 0; n <= 100; ++n) lengths.push_back(n);
  for (size_t n : {127, 128, 129, 4064, 4095, 4096, 4097}) lengths.push_back(n);
  return lengths;
}

template <typename Unit>
struct Text {
  std::vector<Unit> buffer;
  const Unit* p;
  const Unit* end;
};

// `n` units at `offset` units from an aligned start, the last unit the
// buffer's last; most units are `common`, some `rare`.
template <typename Unit>
Text<Unit> MakeText(std::mt19937& random, size_t offset, size_t n, const std::vector<Unit>& common,
                    const std::vector<Unit>& rare, unsigned rarePercent) {
  Text<Unit> t;
  t.buffer.resize(offset + n);
  for (size_t k = offset; k < offset + n; ++k) {
    const bool isRare = random() % 100 < rarePercent;
    const auto& from = isRare ? rare : common;
    t.buffer[k] = from[random() % from.size()];
  }
  t.p = t.buffer.data() + offset;
  t.end = t.p + n;
  return t;
}

TEST_P(Variants, AgreeWithTheReference) {
  const Kernels& ref = *KernelsFor(Level::Scalar);
  const Kernels& k = *KernelsFor(GetParam());
  std::mt19937 random(26);
  const std::vector<uint8_t> plainBytes = {'a', 'b', '7', '~', 33, 0x7F};
  const std::vector<uint8_t> rareBytes = {';', '"', 0, 32, 1, 0x80, 0xFF, 0xC3};
  const std::vector<char16_t> plainUnits = {u'a', u'~', 33, 0x7F, 0xFF, 0x80};
  const std::vector<char16_t> rareUnits = {u';', u'"', 0, 32, 0x100, 0xFFFF, 0x2028, 0x3B00, 0x2200};
  for (size_t n : Lengths()) {
    for (size_t offset = 0; offset < 32; offset += (n > 200 ? 7 : 1)) {
      for (unsigned rare : {0u, 1u, 20u}) {
        const auto b = MakeText(random, offset, n, plainBytes, rareBytes, rare);
        const auto u = MakeText(random, offset, n, plainUnits, rareUnits, rare);
        SCOPED_TRACE(testing::Message() << "n " << n << ", offset " << offset << ", rare " << rare);
        EXPECT_EQ(k.isAscii(b.p, n), ref.isAscii(b.p, n));
        EXPECT_EQ(k.fitsLatin1(u.p, n), ref.fitsLatin1(u.p, n));
        EXPECT_EQ(k.findByte(b.p, b.end, ';'), ref.findByte(b.p, b.end, ';'));
        EXPECT_EQ(k.findByte(b.p, b.end, 0), ref.findByte(b.p, b.end, 0));
        EXPECT_EQ(k.countByte(b.p, n, '"'), ref.countByte(b.p, n, '"'));
        EXPECT_EQ(k.findAny3Bytes(b.p, b.end, 0, '"', ';'), ref.findAny3Bytes(b.p, b.end, 0, '"', ';'));
        EXPECT_EQ(k.findAny3Bytes(b.p, b.end, 0x80, 0xFF, 0xC3), ref.findAny3Bytes(b.p, b.end, 0x80, 0xFF, 0xC3));
        EXPECT_EQ(k.findAny3Units(u.p, u.end, 0, u'"', u';'), ref.findAny3Units(u.p, u.end, 0, u'"', u';'));
        EXPECT_EQ(k.findAny3Units(u.p, u.end, 0x100, 0x2200, 0xFFFF),
                  ref.findAny3Units(u.p, u.end, 0x100, 0x2200, 0xFFFF));
        EXPECT_EQ(k.findBlankOr2Bytes(b.p, b.end, '"', ';'), ref.findBlankOr2Bytes(b.p, b.end, '"', ';'));
        EXPECT_EQ(k.findBlankOr2Bytes(b.p, b.end, 0xFF, 0x80), ref.findBlankOr2Bytes(b.p, b.end, 0xFF, 0x80));
        EXPECT_EQ(k.findBlankOr2Units(u.p, u.end, u'"', u';'), ref.findBlankOr2Units(u.p, u.end, u'"', u';'));
        EXPECT_EQ(k.findBlankOr2Units(u.p, u.end, 0x2028, 0x100), ref.findBlankOr2Units(u.p, u.end, 0x2028, 0x100));
        // Widened into a buffer that ends where the text does, with a
        // guard before it that must stay.
        std::vector<char16_t> got(n + 1, 0xABCD), want(n + 1, 0xABCD);
        k.widenLatin1(b.p, n, got.data() + 1);
        ref.widenLatin1(b.p, n, want.data() + 1);
        EXPECT_EQ(got, want);
        if (::testing::Test::HasFailure()) return;
      }
    }
  }
}

// The variant in use is the widest the processor runs, or the one that
// QMCSV_SIMD asks for (ctest runs this program once so, with sse2).
TEST(ActiveKernels, WidestOrAsked) {
  const char* asked = std::getenv("QMCSV_SIMD");
  if (asked) {
    EXPECT_STREQ(Active().name, asked);
  } else {
    EXPECT_EQ(Active().level, KernelsFor(Level::Avx2) ? Level::Avx2 : Level::Sse2);
  }
  EXPECT_EQ(KernelsFor(Active().level), &Active());
}

}  // namespace
}  // namespace qm::simd
