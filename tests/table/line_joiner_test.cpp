// The cell joining rules, and the writer's fast join, which must agree with
// the plain one on every record.
#include "table/line_joiner.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "core/delimited_text.h"

namespace qm {
namespace {

using Cells = std::vector<std::u16string>;

constexpr TextFormat kSemicolonStrict{u';', u'"', true};
constexpr TextFormat kCommaLoose{u',', u'"', false};
constexpr TextFormat kNoQuote{u';', 0, true};

std::u16string FastJoin(const Cells& cells, const TextFormat& format, std::u16string prefix = {}) {
  std::vector<std::u16string_view> views(cells.begin(), cells.end());
  AppendJoinedRecord(Record(views), format, prefix);
  return prefix;
}

TEST(LineJoiner, ReferenceAndFastJoinGiveTheLine) {
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
    EXPECT_EQ(FastJoin(c.cells, c.format, u"prefix"), u"prefix" + c.line) << c.name;
  }
}

// Random records over an alphabet rich in the characters that matter, kept
// one byte a character or in UTF-16.
TEST(LineJoiner, AgreesWithReferenceOnRandomRecords) {
  const std::u16string alphabet = u"ab ;,\"'\t\x01 xyz\u00e9\u4e2d\U0001F600";
  const size_t oneByte = 14;  // the characters before the CJK one lie below U+0100
  const TextFormat formats[] = {kSemicolonStrict,
                                TextFormat{u',', u'"', true},
                                kCommaLoose,
                                kNoQuote,
                                TextFormat{u'\t', u'\'', false},
                                TextFormat{u'"', u'"', true},
                                TextFormat{u' ', u'\'', false}};
  std::mt19937 random(12345);
  for (int round = 0; round < 4000; ++round) {
    // Every fourth record has long cells, mostly letters, so that cells of
    // more than sixteen units come up.
    const bool longCells = round % 4 == 0;
    const size_t letters = round % 2 ? oneByte : alphabet.size();
    Cells cells(random() % 8);
    for (auto& cell : cells) {
      const size_t length = random() % (longCells ? 60 : 6);
      for (size_t k = 0; k < length; ++k) {
        const bool letter = longCells && random() % 8 != 0;
        cell.push_back(letter ? static_cast<char16_t>(u'a' + random() % 26) : alphabet[random() % letters]);
      }
    }
    for (const TextFormat& format : formats) {
      const std::u16string joined = FastJoin(cells, format);
      ASSERT_EQ(joined, JoinDelimited(cells, format)) << "record " << round;
      // A join that quotes splits back to the same cells when no cell holds a
      // line break and the quote is not the delimiter.
      if (format.quote != 0 && format.quote != format.delimiter && format.strict && !cells.empty()) {
        EXPECT_EQ(SplitDelimited(joined, format), cells) << "record " << round;
      }
    }
  }
}

}  // namespace
}  // namespace qm
