#include "core/convert.h"

#include <gtest/gtest.h>

#include "core/errors.h"

namespace qm {
namespace {

TEST(Convert, IntegerTextsReadAsStoredParametersExpect) {
  struct Case {
    std::u16string_view text;
    bool ok;
    int32_t value;
  };
  const Case cases[] = {
      {u"  +3", true, 3},        {u"$1F", true, 31},       {u"x10", true, 16},
      {u"-$10", true, -16},      {u"$FFFFFFFF", true, -1}, {u"-2147483648", true, INT32_MIN},
      {u"2147483648", false, 0}, {u"", false, 0},          {u"42 ", false, 0},
      {u"0x", false, 0},
  };
  for (const auto& c : cases) {
    int32_t v = 0;
    EXPECT_EQ(TryStrToInt(c.text, v), c.ok) << std::string(c.text.begin(), c.text.end());
    if (c.ok) {
      EXPECT_EQ(v, c.value);
    }
  }
  EXPECT_EQ(StrToIntDef(u"N", 7), 7);
}

TEST(Convert, StrToIntRaisesWithTheRuntimeMessage) {
  try {
    StrToInt(u"abc");
    FAIL();
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"'abc' is not a valid integer value");
    EXPECT_STREQ(e.what(), "'abc' is not a valid integer value");
  }
}

TEST(Convert, HexPaddingAndUnsignedIdentities) {
  EXPECT_EQ(IntToHex(42, 8), u"0000002A");
  uint64_t v = 0;
  EXPECT_TRUE(TryStrToUInt64(u"18446744073709551615", v));
  EXPECT_EQ(v, UINT64_MAX);
  EXPECT_FALSE(TryStrToUInt64(u"18446744073709551616", v));
  EXPECT_FALSE(TryStrToUInt64(u"-1", v));
  EXPECT_FALSE(TryStrToUInt64(u"", v));
}

}  // namespace
}  // namespace qm
