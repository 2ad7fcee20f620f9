#include "boundary/param_parser.h"
#include "core/text_lines.h"

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

#include "core/convert.h"

namespace qm {
namespace {

TEST(ParamParser, ReadsValuesAsStoredBlocksHoldThem) {
  const TQMParamParser p(u"a=b=c\r\nFlag=\nyes=yes\ntwo=2\rneg=-1\r\nN=12x\nNAME=upper\nhex=$1F\nname=second\n");
  EXPECT_EQ(p.GetString(u"a"), u"b=c");  // the value starts after the first "="
  EXPECT_TRUE(p.ParamExist(u"Flag"));
  EXPECT_TRUE(p.GetBoolDef(u"Flag", true));       // present but empty: the default
  EXPECT_EQ(p.GetStringDef(u"Flag", u"x"), u"");  // ...but not for strings
  EXPECT_FALSE(p.GetBoolDef(u"yes", true));       // unreadable counts as 0
  EXPECT_TRUE(p.GetBool(u"two"));
  EXPECT_TRUE(p.GetBool(u"neg"));
  EXPECT_EQ(p.GetIntegerDef(u"N", 7), 7);
  EXPECT_EQ(p.GetIntegerDef(u"hex", 0), 31);
  EXPECT_EQ(p.GetString(u"name"), u"upper");  // names ignore case; the first line wins
  EXPECT_EQ(p.GetIntegerDef(u"missing", 5), 5);
  EXPECT_FALSE(p.ParamExist(u"missing"));
}

TEST(ParamParser, EmptyValueDeletesAndWritingEndsEveryLineWithCrLf) {
  TQMParamParser p(u"k=1\nother=2");
  p.SetString(u"K", u"");
  EXPECT_FALSE(p.ParamExist(u"k"));
  p.SetInteger(u"other", -3);
  p.SetBool(u"b", true);
  EXPECT_EQ(p.Text(), u"other=-3\r\nb=1\r\n");
  p.SetString(u"multi", u"x\r\ny");  // not escaped: the break survives as a new line
  EXPECT_EQ(TQMParamParser(p.Text()).GetString(u"multi"), u"x");
}

TEST(ParamParser, ListsKeepTheirCountAndDropLeadingEmptyItems) {
  TQMParamParser p;
  p.SetStrings(u"L", {u"a", u"", u"c"});
  EXPECT_EQ(p.Text(), u"L_count=3\r\nL_0=a\r\nL_2=c\r\n");
  EXPECT_EQ(p.GetStrings(u"L"), u"a\r\n\r\nc");
  p.SetStrings(u"E", {u"", u"", u"a", u"", u"b"});
  EXPECT_EQ(p.GetStrings(u"E"), u"a\r\n\r\nb");
  p.SetStrings(u"L", {u"z"});  // a shorter list leaves the old tail, unread
  EXPECT_EQ(p.GetStrings(u"L"), u"z");
  EXPECT_TRUE(p.ParamExist(u"L_2"));
  EXPECT_EQ(p.GetStringsDef(u"none", u"dflt"), u"dflt");
  p.SetInteger(u"Z_count", 0);
  EXPECT_EQ(p.GetStringsDef(u"Z", u"dflt"), u"dflt");
}

// A block read from the host's record answers as a copy of it would, up to
// its terminator, on either side of the size read in place; a change never
// writes to the host's block.
TEST(ParamParser, HostRecordReadsAsItsTextAndChangesLeaveItAlone) {
  for (const int extra : {0, 13, 14}) {  // 3, 16 and 17 lines
    std::u16string block = u"a=b=c\r\nFlag=\nN=12\r";
    for (int i = 0; i < extra; ++i) block += u"k" + IntToStr(i) + u"=" + IntToStr(i) + u"\n";
    const TQMParamParser copied(block);
    block += std::u16string(1, u'\0') + u"after=nul";
    const std::u16string original = block;
    TAFActionParams record{static_cast<int32_t>((block.size() + 1) * 2), block.data(), 0, 0, 0};
    TQMParamParser p(record);
    EXPECT_EQ(p.Text(), copied.Text());
    EXPECT_EQ(p.GetStringView(u"A"), u"b=c");
    EXPECT_EQ(p.GetIntegerDef(u"n", 0), 12);
    EXPECT_FALSE(p.ParamExist(u"after"));
    p.SetString(u"a", u"new");
    p.SetString(u"Flag", u"");
    EXPECT_EQ(block, original);
    EXPECT_EQ(p.Text().substr(0, 13), u"a=new\r\nN=12\r\n");
    if (extra > 0) {
      EXPECT_EQ(p.GetInteger(u"K" + IntToStr(extra - 1)), extra - 1);
    }
  }
}

// Keys are looked up through an index, not by scanning the block: a block of
// many entries reads in linear time, and the first line of a name still wins.
TEST(ParamParser, ManyEntriesReadFastAndFirstLineWins) {
  constexpr int kEntries = 100'000;
  std::u16string block;
  for (int i = 0; i < kEntries; ++i) block += u"key" + IntToStr(i) + u"=" + IntToStr(i) + u"\n";
  block += u"KEY7=later\n";
  const auto start = std::chrono::steady_clock::now();
  TQMParamParser p(block);
  for (int i = 0; i < kEntries; ++i) ASSERT_EQ(p.GetInteger(u"Key" + IntToStr(i)), i);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  p.SetString(u"key7", u"");
  EXPECT_EQ(p.GetString(u"key7"), u"later");  // the next line of the name moves up
}

// Small blocks are searched line by line and large ones through their index:
// both give the same answers.
TEST(ParamParser, PresentIndicesComeFromTheBlocksNames) {
  const std::u16string small =
      u"line00000000=a\nLINE0000000a=b\nline7FFFFFFE=c\nline1=short\nlinezz=x\nline00000003\n"
      u"line000000030=long\nline00000003=second\nother00000002=y";
  std::u16string large = small;
  for (int i = 0; i < 20; ++i) large += u"\npad" + IntToStr(i) + u"=x";
  const auto keyOf = +[](int32_t i) { return u"line" + IntToHex(static_cast<uint32_t>(i), 8); };
  for (const std::u16string& block : {small, large}) {
    const TQMParamParser p(block);
    EXPECT_EQ(p.PresentIndices(u"line", 2147483647, keyOf), (std::vector<int32_t>{0, 3, 10, 0x7FFFFFFE}));
    EXPECT_EQ(p.PresentIndices(u"line", 10, keyOf), (std::vector<int32_t>{0, 3}));
    EXPECT_EQ(p.PresentIndices(u"line", 0, keyOf), std::vector<int32_t>{});
    EXPECT_EQ(p.GetString(u"LINE00000003"), u"");  // the first line of the name
  }
  // A block that grows past the size that is searched line by line.
  TQMParamParser grown(small);
  for (int i = 0; i < 20; ++i) grown.SetString(u"Pad" + IntToStr(i), IntToStr(i));
  grown.SetString(u"LINE00000003", u"set");
  EXPECT_EQ(grown.GetString(u"pad0"), u"0");
  EXPECT_EQ(grown.GetString(u"pad19"), u"19");
  EXPECT_EQ(grown.GetString(u"line00000003"), u"set");
  EXPECT_EQ(grown.PresentIndices(u"line", 10, keyOf), (std::vector<int32_t>{0, 3}));
}

}  // namespace
}  // namespace qm
