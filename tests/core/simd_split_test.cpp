#include "core/simd_split.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace qm::simd {
namespace {

// The vector masks against the reference, for delimiters and quotes below,
// within and above the codes that end a run (a tab, 0, 13, 14), on pieces
// of the bytes that matter, each piece ending where its buffer ends (the
// sanitizer build catches a read past it).
TEST(PieceMasks, AgreeWithTheReference) {
  const uint8_t bytes[] = {'a', 'z', ';', ',', '"', '\t', 0, 1, 13, 14, '\r', '\n', 0x7F, 0x80, 0xC3, 0xFF, ' '};
  const uint8_t delimiters[] = {';', '\t', ',', 14, '"'};
  const uint8_t quotes[] = {'"', 0, '\'', 13};
  std::mt19937 random(64);
  for (int round = 0; round < 2000; ++round) {
    std::vector<uint8_t> piece(64);
    for (uint8_t& b : piece) b = random() % 3 ? 'a' : bytes[random() % std::size(bytes)];
    for (const uint8_t delimiter : delimiters) {
      for (const uint8_t quote : quotes) {
        PieceMasks got;
        PieceMasker(delimiter, quote).Mask(piece.data(), got);
        const PieceMasks want = MaskPieceScalar(piece.data(), delimiter, quote);
        ASSERT_EQ(got.delimiters, want.delimiters) << "round " << round;
        ASSERT_EQ(got.others, want.others) << "round " << round;
      }
    }
  }
}

}  // namespace
}  // namespace qm::simd
