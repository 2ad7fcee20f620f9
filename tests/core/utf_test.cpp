#include "core/utf.h"

#include <gtest/gtest.h>

namespace qm {
namespace {

// One U+FFFD per maximal subpart: the longest prefix that could still have
// begun a valid sequence; decoding goes on at the first byte that did not fit.
TEST(Utf, MalformedInputGivesOneReplacementPerMaximalSubpart) {
  const struct {
    const char* bytes;
    const char16_t* text;
  } cases[] = {
      {"a\xff"
       "b",
       u"a\ufffdb"},
      {"\x80\xbf", u"\ufffd\ufffd"},                      // lone continuation bytes
      {"ab\xe2\x82", u"ab\ufffd"},                        // truncated at the end
      {"\xc0\x80", u"\ufffd\ufffd"},                      // C0 never starts a sequence
      {"\xe0\x80\x80", u"\ufffd\ufffd\ufffd"},            // overlong three-byte form
      {"\xed\xa0\x80x", u"\ufffd\ufffd\ufffdx"},          // encoded surrogate
      {"\xf4\x90\x80\x80", u"\ufffd\ufffd\ufffd\ufffd"},  // above U+10FFFF
      {"\xf0\x9f\x98", u"\ufffd"},                        // truncated four-byte form
      {"\xf4\x8f\xbf\xbf\xc3\xa4", u"\U0010FFFF\u00e4"},  // the largest code point, then a valid pair
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Utf8ToUtf16(c.bytes), c.text) << c.bytes;
  }
  EXPECT_EQ(Utf16ToUtf8(std::u16string(1, char16_t(0xD800))), "\xef\xbf\xbd");  // lone surrogate
}

}  // namespace
}  // namespace qm
