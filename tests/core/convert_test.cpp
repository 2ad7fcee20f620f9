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
      {u"12", true, 12},        {u"-7", true, -7},          {u"+3", true, 3},
      {u"  42", true, 42},      {u"$1F", true, 31},         {u"0x10", true, 16},
      {u"x10", true, 16},       {u"-$10", true, -16},       {u"$FFFFFFFF", true, -1},
      {u"2147483647", true, 2147483647},                    {u"-2147483648", true, INT32_MIN},
      {u"2147483648", false, 0}, {u"12x", false, 0},        {u"", false, 0},
      {u"-", false, 0},         {u"1.5", false, 0},         {u"42 ", false, 0},
      {u"abc", false, 0},       {u"0x", false, 0},
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
  EXPECT_EQ(IntToHex(0x12345, 4), u"12345");
  EXPECT_EQ(IntToStr(-2147483648LL), u"-2147483648");
  uint64_t v = 0;
  EXPECT_TRUE(TryStrToUInt64(u"18446744073709551615", v));
  EXPECT_EQ(v, UINT64_MAX);
  EXPECT_FALSE(TryStrToUInt64(u"18446744073709551616", v));
  EXPECT_FALSE(TryStrToUInt64(u"-1", v));
  EXPECT_FALSE(TryStrToUInt64(u"", v));
  EXPECT_EQ(Trim(u" \t a b \r\n"), u"a b");
}

}  // namespace
}  // namespace qm
