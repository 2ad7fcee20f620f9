// The cell splitting and joining rules, and the loader's and writer's fast
// versions of them, which must agree with the plain ones on every line.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "core/text_lines.h"
#include "core/utf.h"
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

struct SplitCase {
  const char* name;
  std::u16string line;
  TextFormat format;
  Cells cells;
};

class SplitTest : public ::testing::TestWithParam<SplitCase> {};

TEST_P(SplitTest, ReferenceAndFastSplitGiveTheCells) {
  const SplitCase& c = GetParam();
  EXPECT_EQ(SplitDelimited(c.line, c.format), c.cells);

  std::vector<char16_t> text(c.line.size() + 1);
  std::vector<uint32_t> ends(c.line.size() + 1);
  const size_t count = SplitLineInto(c.line, c.format, text.data(), ends.data());
  Cells fast;
  for (size_t k = 0; k < count; ++k) {
    const uint32_t begin = k ? ends[k - 1] : 0;
    fast.emplace_back(text.data() + begin, ends[k] - begin);
  }
  EXPECT_EQ(fast, c.cells);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, SplitTest,
    ::testing::Values(
        SplitCase{"three_cells", u"a;b;c", kSemicolonStrict, {u"a", u"b", u"c"}},
        SplitCase{"empty_line_no_cells", u"", kSemicolonStrict, {}},
        SplitCase{"empty_line_loose", u"", kCommaLoose, {}},
        SplitCase{"blank_line_loose", u"   \t ", kCommaLoose, {}},
        SplitCase{"blank_line_strict", u"  ", kCommaStrict, {u"  "}},
        SplitCase{"two_delimiters_empty_cell", u"a;;b", kSemicolonStrict, {u"a", u"", u"b"}},
        SplitCase{"trailing_delimiter", u"a;b;", kSemicolonStrict, {u"a", u"b", u""}},
        SplitCase{"only_delimiter", u";", kSemicolonStrict, {u"", u""}},
        SplitCase{"leading_delimiter", u";a", kSemicolonStrict, {u"", u"a"}},
        SplitCase{"text_after_closing_quote", u"'ab'cd,x", TextFormat{u',', u'\'', true}, {u"ab", u"cd", u"x"}},
        SplitCase{"text_after_closing_double_quote", u"\"ab\"cd,x", kCommaStrict, {u"ab", u"cd", u"x"}},
        SplitCase{"loose_blank_separates", u"a b,c", kCommaLoose, {u"a", u"b", u"c"}},
        SplitCase{"loose_blanks_dropped", u"a, b ,c", kCommaLoose, {u"a", u"b", u"c"}},
        SplitCase{"strict_blanks_kept", u"a, b ,c", kCommaStrict, {u"a", u" b ", u"c"}},
        SplitCase{"quoted_delimiter", u"\"a;b\";c", kSemicolonStrict, {u"a;b", u"c"}},
        SplitCase{"doubled_quote", u"\"say \"\"hi\"\"\";x", kSemicolonStrict, {u"say \"hi\"", u"x"}},
        SplitCase{"unclosed_quote_takes_rest", u"a;\"b;c", kSemicolonStrict, {u"a", u"b;c"}},
        SplitCase{"empty_quoted", u"\"\"", kSemicolonStrict, {u""}},
        SplitCase{"quoted_then_trailing_delimiter", u"\"x\";", kSemicolonStrict, {u"x", u""}},
        SplitCase{"quote_inside_plain_cell", u"a\"b;c", kSemicolonStrict, {u"a\"b", u"c"}},
        SplitCase{"no_quote_char", u"\"a;b\"", kNoQuote, {u"\"a", u"b\""}},
        SplitCase{"loose_quoted_keeps_blanks", u"  \" a b \" , c ", kCommaLoose, {u" a b ", u"c"}},
        SplitCase{"loose_trailing_delimiter_then_blank", u"a, ", kCommaLoose, {u"a"}},
        SplitCase{"loose_trailing_delimiter", u"a,", kCommaLoose, {u"a", u""}},
        SplitCase{"tab_delimiter_loose", u"x\ty\t'z z'", kTabLoose, {u"x", u"y", u"z z"}},
        SplitCase{"non_ascii", u"\u00c4pfel;\u5c71\u7530;\U0001F600", kSemicolonStrict,
                  {u"\u00c4pfel", u"\u5c71\u7530", u"\U0001F600"}},
        SplitCase{"long_plain_cells", u"abcdefghijklmnopqrstuvwxyz0123456789;ABCDEFGHIJKLMNOPQRSTUVWXYZ",
                  kSemicolonStrict, {u"abcdefghijklmnopqrstuvwxyz0123456789", u"ABCDEFGHIJKLMNOPQRSTUVWXYZ"}}),
    [](const ::testing::TestParamInfo<SplitCase>& info) { return std::string(info.param.name); });

struct JoinCase {
  const char* name;
  Cells cells;
  TextFormat format;
  std::u16string line;
};

class JoinTest : public ::testing::TestWithParam<JoinCase> {};

TEST_P(JoinTest, ReferenceAndFastJoinGiveTheLine) {
  const JoinCase& c = GetParam();
  EXPECT_EQ(JoinDelimited(c.cells, c.format), c.line);

  std::vector<std::u16string_view> views(c.cells.begin(), c.cells.end());
  std::u16string fast = u"prefix";
  AppendJoinedRecord(Record(views), c.format, fast);
  EXPECT_EQ(fast, u"prefix" + c.line);
}

INSTANTIATE_TEST_SUITE_P(
    Records, JoinTest,
    ::testing::Values(JoinCase{"plain", {u"a", u"b", u"c"}, kSemicolonStrict, u"a;b;c"},
                      JoinCase{"no_cells_empty_line", {}, kSemicolonStrict, u""},
                      JoinCase{"one_empty_cell_two_quotes", {u""}, kSemicolonStrict, u"\"\""},
                      JoinCase{"two_empty_cells", {u"", u""}, kSemicolonStrict, u";"},
                      JoinCase{"inner_quotes_doubled", {u"say \"hi\""}, kSemicolonStrict, u"\"say \"\"hi\"\"\""},
                      JoinCase{"delimiter_quoted", {u"a;b", u"c"}, kSemicolonStrict, u"\"a;b\";c"},
                      JoinCase{"strict_blank_unquoted", {u"a b", u"c\r\nd"}, kSemicolonStrict, u"a b;c\r\nd"},
                      JoinCase{"loose_blank_quoted", {u"a b", u"c"}, kCommaLoose, u"\"a b\",c"},
                      JoinCase{"loose_tab_quoted", {u"a\tb"}, kCommaLoose, u"\"a\tb\""},
                      JoinCase{"nul_stops_quote_check", {std::u16string(u"a\0;b", 4)}, kSemicolonStrict,
                               std::u16string(u"a\0;b", 4)},
                      JoinCase{"no_quote_char_plain", {u"a;b", u""}, kNoQuote, u"a;b;"},
                      JoinCase{"no_quote_char_single_empty", {u""}, kNoQuote, u""},
                      JoinCase{"quote_only_cell", {u"\""}, kSemicolonStrict, u"\"\"\"\""}),
    [](const ::testing::TestParamInfo<JoinCase>& info) { return std::string(info.param.name); });

struct LinesCase {
  const char* name;
  std::u16string text;
  Cells lines;
};

class TextLinesTest : public ::testing::TestWithParam<LinesCase> {};

TEST_P(TextLinesTest, CutsAtEveryBreak) { EXPECT_EQ(SplitLines(GetParam().text), GetParam().lines); }

INSTANTIATE_TEST_SUITE_P(
    Texts, TextLinesTest,
    ::testing::Values(LinesCase{"empty_text_no_lines", u"", {}},
                      LinesCase{"one_line", u"abc", {u"abc"}},
                      LinesCase{"trailing_break_no_extra_line", u"abc\r\n", {u"abc"}},
                      LinesCase{"crlf_counts_once", u"a\r\nb", {u"a", u"b"}},
                      LinesCase{"lone_cr", u"a\rb\r", {u"a", u"b"}},
                      LinesCase{"lone_lf", u"a\nb", {u"a", u"b"}},
                      LinesCase{"lf_cr_counts_twice", u"a\n\rb", {u"a", u"", u"b"}},
                      LinesCase{"empty_lines_kept", u"\r\n\r\nx\n\n", {u"", u"", u"x", u""}},
                      LinesCase{"nul_ends_text", std::u16string(u"a;b\r\nc\0d\r\ne", 12), {u"a;b", u"c"}},
                      LinesCase{"nul_after_break", std::u16string(u"a\n\0b", 4), {u"a"}},
                      LinesCase{"nul_first", std::u16string(u"\0a", 2), {}},
                      LinesCase{"only_break", u"\n", {u""}}),
    [](const ::testing::TestParamInfo<LinesCase>& info) { return std::string(info.param.name); });

// Random lines over an alphabet rich in the characters that matter.
TEST(FastSplitAndJoin, AgreeWithReferenceOnRandomLines) {
  const std::u16string alphabet = u"ab ;,\"'\t\x01 xyz\u00e9\u4e2d\U0001F600";
  const TextFormat formats[] = {kSemicolonStrict, kCommaStrict, kCommaLoose, kNoQuote, kTabLoose,
                                TextFormat{u'"', u'"', true}, TextFormat{u' ', u'\'', false}};
  std::mt19937 random(12345);
  std::vector<char16_t> text;
  std::vector<uint32_t> ends;
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
      text.assign(line.size() + 1, 0);
      ends.assign(line.size() + 1, 0);
      const size_t count = SplitLineInto(line, format, text.data(), ends.data());
      ASSERT_EQ(count, expected.size()) << "line " << round;
      for (size_t k = 0; k < count; ++k) {
        const uint32_t begin = k ? ends[k - 1] : 0;
        ASSERT_EQ(std::u16string(text.data() + begin, ends[k] - begin), expected[k]) << "line " << round;
      }
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

// The reader splits UTF-8 lines with decoding paths of its own; malformed
// bytes must come out as the core decoder gives them, inside a cell and
// quoted, with a short and a long run of text around them.
TEST(FastSplitAndJoin, Utf8SplitDecodesMalformedBytesAsCore) {
  const char* const malformed[] = {"\xff", "\x80\xbf", "\xe2\x82", "\xc0\x80", "\xc1\xbf", "\xe0\x80\x80",
                                   "\xe0\x9f\xbf", "\xed\xa0\x80", "\xed\xbf\xbf", "\xf0\x80\x80\x80",
                                   "\xf4\x90\x80\x80", "\xf0\x9f\x98", "\xf5\x80", "\xc3\xa4\xe4\xb8"};
  const std::string padding(90, 'x');
  for (const char* bytes : malformed) {
    for (const std::string& cell : {std::string(bytes) + "y", "\"" + padding + bytes + "\"", padding + bytes}) {
      const std::string line = cell + "\n";
      std::vector<char16_t> text(line.size() + 16);
      std::vector<uint32_t> ends(line.size() + 2);
      const char* stop = nullptr;
      Utf8LookAhead look;
      ASSERT_EQ(SplitUtf8Line(line.data(), line.data() + line.size(), kSemicolonStrict, text.data(), ends.data(),
                              stop, look), 1u);
      const std::string plain = cell[0] == '"' ? cell.substr(1, cell.size() - 2) : cell;
      EXPECT_EQ(std::u16string(text.data(), ends[0]), Utf8ToUtf16(plain)) << cell;
    }
  }
}

}  // namespace
}  // namespace qm
