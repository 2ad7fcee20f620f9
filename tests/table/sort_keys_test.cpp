// The orders a sort puts records in, and cells read as numbers.
#include "table/sort_keys.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace qm {
namespace {

std::vector<Record> OneCellRecords(const std::vector<std::u16string>& keys) {
  std::vector<Record> records;
  for (const std::u16string& key : keys) {
    const std::u16string_view cell = key;
    records.emplace_back(std::span<const std::u16string_view>(&cell, 1));
  }
  return records;
}

// The keys in the order given, and whether the order holds every row once.
std::vector<std::u16string> Ordered(const std::vector<std::u16string>& keys, const std::vector<uint32_t>& order) {
  std::vector<uint32_t> rows = order;
  std::sort(rows.begin(), rows.end());
  std::vector<uint32_t> all(keys.size());
  std::iota(all.begin(), all.end(), 0u);
  EXPECT_EQ(rows, all) << "not every row once";
  std::vector<std::u16string> ordered;
  for (uint32_t row : order) ordered.push_back(keys[row]);
  return ordered;
}

// Text that is no number sorts as 0.
TEST(SortKeys, NumbersTieWhatIsNoNumberAtZero) {
  const std::vector<std::u16string> keys = {u" 2.5 ", u"-1e2", u"+3", u"1e", u".5", u"1,5"};
  std::vector<uint32_t> order(keys.size());
  NumberOrder(OneCellRecords(keys), 0, order.data());
  std::vector<std::u16string> got = Ordered(keys, order);
  std::sort(got.begin() + 1, got.begin() + 3);  // the tie's order is not fixed
  EXPECT_EQ(got, (std::vector<std::u16string>{u"-1e2", u"1,5", u"1e", u".5", u" 2.5 ", u"+3"}));
}

// Random keys with long shared prefixes, embedded character 0 and mixed case
// come out ordered as an ordinal comparison (with ASCII folding) orders them.
TEST(SortKeys, TextMatchesOrdinalComparison) {
  const std::u16string alphabet = std::u16string(u"aAbB_zZ\u00e9\u00c9", 9) + std::u16string(1, u'\0');
  auto fold = [](char16_t c) { return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c; };
  std::mt19937 random(77);
  for (int round = 0; round < 40; ++round) {
    std::vector<std::u16string> keys;
    for (int k = 0; k < 300; ++k) {
      std::u16string key = round % 2 ? u"common prefix " : u"";
      const size_t length = random() % 12;
      for (size_t i = 0; i < length; ++i) key.push_back(alphabet[random() % alphabet.size()]);
      // Every third round some keys are kept in UTF-16.
      if (round % 3 == 0 && k % 5 == 0) key.push_back(u'\u4e2d');
      keys.push_back(key);
    }
    const std::vector<Record> records = OneCellRecords(keys);
    for (const bool caseSensitive : {true, false}) {
      std::vector<uint32_t> order(keys.size());
      TextOrder(records, 0, caseSensitive, order.data());
      const std::vector<std::u16string> ordered = Ordered(keys, order);
      auto less = [&](const std::u16string& a, const std::u16string& b) {
        const size_t n = std::min(a.size(), b.size());
        for (size_t i = 0; i < n; ++i) {
          const char16_t x = caseSensitive ? a[i] : fold(a[i]);
          const char16_t y = caseSensitive ? b[i] : fold(b[i]);
          if (x != y) return x < y;
        }
        return a.size() < b.size();
      };
      EXPECT_TRUE(std::is_sorted(ordered.begin(), ordered.end(), less)) << "round " << round;
    }
  }
}

TEST(SortKeys, TextToFloatSyntax) {
  struct Case {
    std::u16string text;
    bool ok;
    double value;
  };
  const Case cases[] = {{u"0", true, 0},     {u"  -12.5e1\t", true, -125}, {u"+7", true, 7},   {u"", false, 0},
                        {u"  ", false, 0},   {u"1 000", false, 0},         {u"inf", false, 0}, {u"1e999", false, 0},
                        {u"12abc", false, 0}};
  for (const Case& c : cases) {
    double value = -999;
    EXPECT_EQ(TryTextToFloat(c.text, value), c.ok) << std::string(c.text.begin(), c.text.end());
    if (c.ok) {
      EXPECT_DOUBLE_EQ(value, c.value);
    }
  }
  // Short decimals take a shortcut; it must give the very value the full
  // conversion gives, bit for bit, on both sides of the shortcut's 15 digits.
  std::mt19937 random(7);
  for (int round = 0; round < 20000; ++round) {
    std::string ascii = round % 3 == 0 ? "-" : "";
    const int digits = 1 + static_cast<int>(random() % 18);
    const int point = static_cast<int>(random() % static_cast<unsigned>(digits + 1));
    for (int d = 0; d < digits; ++d) {
      if (d == point) ascii += '.';
      ascii += static_cast<char>('0' + random() % 10);
    }
    double want = 0, got = 0;
    std::from_chars(ascii.data(), ascii.data() + ascii.size(), want);
    ASSERT_TRUE(TryTextToFloat(std::u16string(ascii.begin(), ascii.end()), got)) << ascii;
    EXPECT_EQ(std::signbit(got), std::signbit(want)) << ascii;
    EXPECT_EQ(got, want) << ascii;
  }
  EXPECT_EQ(NumericCompare(u"abc", u"0"), 0);
  EXPECT_EQ(NumericCompare(u"-1", u"x"), -1);
  EXPECT_EQ(NumericCompare(u"10", u"9"), 1);
}

}  // namespace
}  // namespace qm
