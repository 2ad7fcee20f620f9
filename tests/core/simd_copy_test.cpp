#include "core/simd_copy.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace qm {
namespace {

// Every size through the inline moves and past them into memcpy, at every
// alignment of a 16-byte word: exactly the bytes asked for are copied, and
// nothing beside them is touched.
TEST(CopyBytes, CopiesExactlyTheBytesAskedFor) {
  std::vector<unsigned char> from(400);
  for (size_t k = 0; k < from.size(); ++k) from[k] = static_cast<unsigned char>(k * 7 + 1);
  for (size_t n = 0; n <= 300; ++n) {
    for (size_t at = 0; at < 16; at += 5) {
      std::vector<unsigned char> to(n + 64, 0xEE);
      CopyBytes(to.data() + 32, from.data() + at, n);
      ASSERT_EQ(std::memcmp(to.data() + 32, from.data() + at, n), 0) << n << " at " << at;
      for (size_t k = 0; k < 32; ++k) {
        ASSERT_EQ(to[k], 0xEE) << n;
        ASSERT_EQ(to[32 + n + k], 0xEE) << n;
      }
    }
  }
}

TEST(CopyBytes, LoadShortIsAMemcpyIntoAZeroedWord) {
  const unsigned char bytes[] = {0x81, 0x02, 0xF3, 0x04, 0x95, 0x06, 0xA7, 0x08, 0xFF};
  for (size_t n = 0; n <= 8; ++n) {
    uint64_t expected = 0;
    std::memcpy(&expected, bytes, n);
    EXPECT_EQ(LoadShort(bytes, n), expected) << n;
  }
}

}  // namespace
}  // namespace qm
