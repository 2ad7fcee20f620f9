// The cell splitting and joining rules, and the loader's and writer's fast
// versions of them, which must agree with the plain ones on every line.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "core/text_lines.h"
#include "core/delimited_text.h"
#include "table/line_scanner.h"

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

TEST(LineScanner, ReferenceAndFastSplitGiveTheCells) {
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
      {"non_ascii", u"\u00c4pfel;\u5c71\u7530;\U0001F600", kSemicolonStrict,
       {u"\u00c4pfel", u"\u5c71\u7530", u"\U0001F600"}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(SplitDelimited(c.line, c.format), c.cells) << c.name;
    EXPECT_EQ(FastSplit(c.line, c.format), c.cells) << c.name;
  }
}

TEST(LineScanner, ReferenceAndFastJoinGiveTheLine) {
  const struct {
    const char* name;
    Cells cells;
    TextFormat format;
    std::u16string line;
  } cases[] = {
      {"no_cells_empty_line", {}, kSemicolonStrict, u""},
      {"one_empty_cell_two_quotes", {u""}, kSemicolonStrict, u"\"\""},
      {"inner_quotes_doubled", {u"say \"hi\""}, kSemicolonStrict, u"\"say \"\"hi\"\"\""},
      {"delimiter_quoted", {u"a;b", u"c"}, kSemicolonStrict, u"\"a;b\";c"},
      {"strict_blank_unquoted", {u"a b", u"c\r\nd"}, kSemicolonStrict, u"a b;c\r\nd"},
      {"loose_blank_quoted", {u"a b", u"c"}, kCommaLoose, u"\"a b\",c"},
      {"nul_stops_quote_check", {std::u16string(u"a\0;b", 4)}, kSemicolonStrict, std::u16string(u"a\0;b", 4)},
      {"no_quote_char_plain", {u"a;b", u""}, kNoQuote, u"a;b;"},
      {"quote_only_cell", {u"\""}, kSemicolonStrict, u"\"\"\"\""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(JoinDelimited(c.cells, c.format), c.line) << c.name;
    std::vector<std::u16string_view> views(c.cells.begin(), c.cells.end());
    std::u16string fast = u"prefix";
    AppendJoinedRecord(Record(views), c.format, fast);
    EXPECT_EQ(fast, u"prefix" + c.line) << c.name;
  }
}

TEST(TextLines, CutsAtEveryBreak) {
  const struct {
    const char* name;
    std::u16string text;
    Cells lines;
  } cases[] = {
      {"empty_text_no_lines", u"", {}},
      {"trailing_break_no_extra_line", u"abc\r\n", {u"abc"}},
      {"lone_cr", u"a\rb\r", {u"a", u"b"}},
      {"lf_cr_counts_twice", u"a\n\rb", {u"a", u"", u"b"}},
      {"empty_lines_kept", u"\r\n\r\nx\n\n", {u"", u"", u"x", u""}},
      {"nul_ends_text", std::u16string(u"a;b\r\nc\0d\r\ne", 12), {u"a;b", u"c"}},
      {"nul_first", std::u16string(u"\0a", 2), {}},
      {"only_break", u"\n", {u""}},
  };
  for (const auto& c : cases) EXPECT_EQ(SplitLines(c.text), c.lines) << c.name;
}

// Random lines over an alphabet rich in the characters that matter.
TEST(FastSplitAndJoin, AgreeWithReferenceOnRandomLines) {
  const std::u16string alphabet = u"ab ;,\"'\t\x01 xyz\u00e9\u4e2d\U0001F600";
  const TextFormat formats[] = {kSemicolonStrict, kCommaStrict, kCommaLoose, kNoQuote, kTabLoose,
                                TextFormat{u'"', u'"', true}, TextFormat{u' ', u'\'', false}};
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
      const Cells expected = SplitDelimited(line, format);
      ASSERT_EQ(FastSplit(line, format), expected) << "line " << round;
      std::vector<std::u16string_view> views(expected.begin(), expected.end());
      std::u16string joined;
      AppendJoinedRecord(Record(views), format, joined);
      ASSERT_EQ(joined, JoinDelimited(expected, format)) << "line " << round;
      // A join that quotes splits back to the same cells when no cell holds a
      // line break and the quote is not the delimiter.
      if (format.quote != 0 && format.quote != format.delimiter && format.strict && !expected.empty()) {
        EXPECT_EQ(SplitDelimited(joined, format), expected) << "line " << round;
      }
    }
  }
}

}  // namespace
}  // namespace qm
