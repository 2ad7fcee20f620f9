#include "core/utf.h"

#include <gtest/gtest.h>

namespace qm {
namespace {

TEST(Utf, RoundTripsEveryPlane) {
  const std::u16string text = u"a\u00e4\u20ac\U0001F600z";
  EXPECT_EQ(Utf8ToUtf16(Utf16ToUtf8(text)), text);
  EXPECT_EQ(Utf16ToUtf8(text).size(), 1u + 2 + 3 + 4 + 1);
}

TEST(Utf, MalformedInputBecomesReplacementCharacters) {
  EXPECT_EQ(Utf8ToUtf16("a\xff" "b"), u"a\ufffdb");
  EXPECT_EQ(Utf8ToUtf16("\xe2\x82"), u"\ufffd");              // truncated sequence
  EXPECT_EQ(Utf8ToUtf16("\xc0\xaf"), u"\ufffd");              // overlong slash
  EXPECT_EQ(Utf8ToUtf16("\xed\xa0\x80x"), u"\ufffdx");        // encoded surrogate
  EXPECT_EQ(Utf16ToUtf8(std::u16string(1, char16_t(0xD800))), "\xef\xbf\xbd");  // lone surrogate
}

}  // namespace
}  // namespace qm
