// The cell splitting rules, and the loader's fast split, which must agree
// with the plain one on every line.
#include "table/line_splitter.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "core/delimited_text.h"

namespace qm {
namespace {

using Cells = std::vector<std::u16string>;

constexpr TextFormat kSemicolonStrict{u';', u'"', true};
constexpr TextFormat kCommaStrict{u',', u'"', true};
constexpr TextFormat kCommaLoose{u',', u'"', false};
constexpr TextFormat kNoQuote{u';', 0, true};
constexpr TextFormat kTabLoose{u'\t', u'\'', false};

// The fast split of one line, as cells.
Cells FastSplit(std::u16string_view line, const TextFormat& format) {
  std::vector<char16_t> text(line.size() + 1);
  std::vector<uint32_t> ends(line.size() + 1);
  const size_t count = SplitLineInto(line, format, text.data(), ends.data());
  Cells cells;
  for (size_t k = 0; k < count; ++k) {
    const uint32_t begin = k ? ends[k - 1] : 0;
    cells.emplace_back(text.data() + begin, ends[k] - begin);
  }
  return cells;
}

TEST(LineSplitter, ReferenceAndFastSplitGiveTheCells) {
  const struct {
    const char* name;
    std::u16string line;
    TextFormat format;
    Cells cells;
  } cases[] = {
      {"three_cells", u"a;b;c", kSemicolonStrict, {u"a", u"b", u"c"}},
      {"empty_line_no_cells", u"", kSemicolonStrict, {}},
      {"blank_line_loose", u"   \t ", kCommaLoose, {}},
      {"blank_line_strict", u"  ", kCommaStrict, {u"  "}},
      {"trailing_delimiter", u"a;b;", kSemicolonStrict, {u"a", u"b", u""}},
      {"text_after_closing_quote", u"'ab'cd,x", TextFormat{u',', u'\'', true}, {u"ab", u"cd", u"x"}},
      {"loose_blank_separates", u"a b,c", kCommaLoose, {u"a", u"b", u"c"}},
      {"strict_blanks_kept", u"a, b ,c", kCommaStrict, {u"a", u" b ", u"c"}},
      {"quoted_delimiter", u"\"a;b\";c", kSemicolonStrict, {u"a;b", u"c"}},
      {"doubled_quote", u"\"say \"\"hi\"\"\";x", kSemicolonStrict, {u"say \"hi\"", u"x"}},
      {"unclosed_quote_takes_rest", u"a;\"b;c", kSemicolonStrict, {u"a", u"b;c"}},
      {"quote_inside_plain_cell", u"a\"b;c", kSemicolonStrict, {u"a\"b", u"c"}},
      {"no_quote_char", u"\"a;b\"", kNoQuote, {u"\"a", u"b\""}},
      {"loose_quoted_keeps_blanks", u"  \" a b \" , c ", kCommaLoose, {u" a b ", u"c"}},
      {"loose_trailing_delimiter_then_blank", u"a, ", kCommaLoose, {u"a"}},
      {"non_ascii",
       u"\u00c4pfel;\u5c71\u7530;\U0001F600",
       kSemicolonStrict,
       {u"\u00c4pfel", u"\u5c71\u7530", u"\U0001F600"}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(SplitDelimited(c.line, c.format), c.cells) << c.name;
    EXPECT_EQ(FastSplit(c.line, c.format), c.cells) << c.name;
  }
}

// Random lines over an alphabet rich in the characters that matter.
TEST(LineSplitter, AgreesWithReferenceOnRandomLines) {
  const std::u16string alphabet = u"ab ;,\"'\t\x01 xyz\u00e9\u4e2d\U0001F600";
  const TextFormat formats[] = {kSemicolonStrict,
                                kCommaStrict,
                                kCommaLoose,
                                kNoQuote,
                                kTabLoose,
                                TextFormat{u'"', u'"', true},
                                TextFormat{u' ', u'\'', false}};
  std::mt19937 random(12345);
  for (int round = 0; round < 4000; ++round) {
    // Every fourth line is long and mostly letters, so that cells of more
    // than sixteen units and records of many cells come up.
    const bool longCells = round % 4 == 0;
    const size_t length = random() % (longCells ? 200 : 40);
    std::u16string line;
    for (size_t k = 0; k < length; ++k) {
      const bool letter = longCells && random() % 8 != 0;
      line.push_back(letter ? static_cast<char16_t>(u'a' + random() % 26) : alphabet[random() % alphabet.size()]);
    }
    for (const TextFormat& format : formats) {
      ASSERT_EQ(FastSplit(line, format), SplitDelimited(line, format)) << "line " << round;
    }
  }
}

}  // namespace
}  // namespace qm
