// The in-memory table: padding, column operations, sorting and the list's own
// index errors.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "core/convert.h"
#include "core/errors.h"
#include "table/memory_data_storage.h"

namespace qm {
namespace {

using Cells = std::vector<std::u16string>;

Record MakeRecord(const Cells& cells) {
  std::vector<std::u16string_view> views(cells.begin(), cells.end());
  return Record(views);
}

Cells CellsOf(const Record& record) {
  Cells cells;
  for (int32_t k = 0; k < record.Count(); ++k) cells.emplace_back(record.Cell(k));
  return cells;
}

// A storage with the given field names and records (added without padding
// where a test wants short records).
void Fill(TMemoryStrDataStorage& storage, const Cells& fields, const std::vector<Cells>& rows, bool pad = true) {
  storage.ClearData();
  for (const auto& name : fields) storage.InsertColumn(-1, ColumnFill::Empty, name, u"");
  for (const auto& row : rows) {
    if (pad) {
      storage.AddRecord(MakeRecord(row));
    } else {
      storage.AppendRecord(MakeRecord(row));
    }
  }
}

std::vector<Cells> Rows(const TMemoryStrDataStorage& storage) {
  std::vector<Cells> rows;
  for (const Record& r : storage.Records()) rows.push_back(CellsOf(r));
  return rows;
}

std::u16string ErrorText(const std::function<void()>& action) {
  try {
    action();
  } catch (const EListError& e) {
    return e.Message();
  }
  return u"no error";
}

TEST(MemoryDataStorage, AddRecordPadsShortRecordsAndKeepsLongOnes) {
  TMemoryStrDataStorage storage;
  Fill(storage, {u"a", u"b", u"c", u"d"}, {{u"1", u"2"}, {u"1", u"2", u"3", u"4", u"5", u"6"}, {}});
  EXPECT_EQ(Rows(storage), (std::vector<Cells>{{u"1", u"2", u"", u""},
                                              {u"1", u"2", u"3", u"4", u"5", u"6"},
                                              {u"", u"", u"", u""}}));
  storage.ClearData();
  EXPECT_EQ(storage.FieldCount(), 0);
  EXPECT_EQ(storage.RecordCount(), 0);
}

TEST(MemoryDataStorage, IndexErrorsNameTheOffendingIndex) {
  TMemoryStrDataStorage storage;
  Fill(storage, {u"a", u"b"}, {{u"1", u"2"}, {u"3", u"4"}});
  struct Case {
    const char* name;
    std::function<void()> action;
    std::u16string message;
  };
  const Case cases[] = {
      {"row too big", [&] { (void)storage.GetCellValue(2, 0); }, u"List index out of bounds (2)"},
      {"set cell creates none", [&] { storage.SetCellValue(1, 2, u"x"); }, u"List index out of bounds (2)"},
      {"remove column", [&] { storage.RemoveColumn(2); }, u"List index out of bounds (2)"},
      {"move to", [&] { storage.MoveColumn(0, 2); }, u"List index out of bounds (2)"},
  };
  for (const Case& c : cases) EXPECT_EQ(ErrorText(c.action), c.message) << c.name;
  // Nothing changed by the failed calls.
  EXPECT_EQ(Rows(storage), (std::vector<Cells>{{u"1", u"2"}, {u"3", u"4"}}));
  EXPECT_EQ(storage.FieldNames(), (Cells{u"a", u"b"}));
}

TEST(MemoryDataStorage, MoveIntoShortRecordKeepsEarlierRecordsMoved) {
  TMemoryStrDataStorage storage;
  Fill(storage, {u"A", u"B", u"C"}, {{u"1", u"2", u"3"}, {u"4", u"5"}, {u"7", u"8", u"9"}}, false);
  EXPECT_EQ(ErrorText([&] { storage.MoveColumn(0, 2); }), u"List index out of bounds (2)");
  EXPECT_EQ(storage.FieldNames(), (Cells{u"B", u"C", u"A"}));
  EXPECT_EQ(Rows(storage), (std::vector<Cells>{{u"2", u"3", u"1"}, {u"4", u"5"}, {u"7", u"8", u"9"}}));
}

// Made-up names ("field0", ...) are worked out when asked for; every column
// operation leaves the names a list of stored names would have.
TEST(MemoryDataStorage, MadeUpFieldNamesFollowTheColumnOperations) {
  const struct {
    const char* name;
    std::function<void(TMemoryStrDataStorage&)> change;
    Cells names;
  } cases[] = {
      {"none", [](auto&) {}, {u"field0", u"field1", u"field2"}},
      {"remove last", [](auto& s) { s.RemoveColumn(2); }, {u"field0", u"field1"}},
      {"remove first", [](auto& s) { s.RemoveColumn(0); }, {u"field1", u"field2"}},
      {"move", [](auto& s) { s.MoveColumn(0, 2); }, {u"field1", u"field2", u"field0"}},
      {"insert", [](auto& s) { s.InsertColumn(1, ColumnFill::Empty, u"n", u""); },
       {u"field0", u"n", u"field1", u"field2"}},
      {"append", [](auto& s) { s.InsertColumn(-1, ColumnFill::Empty, u"n", u""); },
       {u"field0", u"field1", u"field2", u"n"}},
      {"append, remove made-up", [](auto& s) {
         s.InsertColumn(3, ColumnFill::Empty, u"n", u"");
         s.RemoveColumn(2);
       }, {u"field0", u"field1", u"n"}},
      {"rename", [](auto& s) { s.SetFieldsname(1, u"s"); }, {u"field0", u"s", u"field2"}},
      {"grow", [](auto& s) { s.SetFieldCount(5); }, {u"field0", u"field1", u"field2", u"", u""}},
      {"shrink", [](auto& s) { s.SetFieldCount(1); }, {u"field0"}},
      {"append, shrink", [](auto& s) {
         s.InsertColumn(-1, ColumnFill::Empty, u"n", u"");
         s.InsertColumn(-1, ColumnFill::Empty, u"m", u"");
         s.SetFieldCount(4);
       }, {u"field0", u"field1", u"field2", u"n"}},
  };
  for (const auto& c : cases) {
    TMemoryStrDataStorage storage;
    storage.MakeUpFieldNames(3);
    c.change(storage);
    EXPECT_EQ(storage.FieldNames(), c.names) << c.name;
    EXPECT_EQ(CellsOf(storage.FieldNameRecord()), c.names) << c.name;
  }
}

std::vector<std::u16string> Keys(const TMemoryStrDataStorage& storage) {
  std::vector<std::u16string> keys;
  for (const Record& r : storage.Records()) keys.emplace_back(r.Cell(0));
  return keys;
}

// Text that is no number sorts as 0 (the text ordering is tested on random keys below).
TEST(MemoryDataStorage, SortNumbersTiesWhatIsNoNumberAtZero) {
  TMemoryStrDataStorage storage;
  Fill(storage, {u"k"}, {{u" 2.5 "}, {u"-1e2"}, {u"+3"}, {u"1e"}, {u".5"}, {u"1,5"}});
  storage.SortByField(0, true, false, true);
  std::vector<std::u16string> got = Keys(storage);
  std::sort(got.begin() + 1, got.begin() + 3);  // the tie's order is not fixed
  EXPECT_EQ(got, (std::vector<std::u16string>{u"-1e2", u"1,5", u"1e", u".5", u" 2.5 ", u"+3"}));
}

// Random keys with long shared prefixes, embedded character 0 and mixed case
// come out ordered as an ordinal comparison (with ASCII folding) orders them.
TEST(MemoryDataStorage, SortTextMatchesOrdinalComparison) {
  const std::u16string alphabet = std::u16string(u"aAbB_zZ\u00e9\u00c9", 9) + std::u16string(1, u'\0');
  auto fold = [](char16_t c) { return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c; };
  std::mt19937 random(77);
  for (int round = 0; round < 40; ++round) {
    std::vector<Cells> rows;
    for (int k = 0; k < 300; ++k) {
      std::u16string key = round % 2 ? u"common prefix " : u"";
      const size_t length = random() % 12;
      for (size_t i = 0; i < length; ++i) key.push_back(alphabet[random() % alphabet.size()]);
      rows.push_back({key, IntToStr(k)});
    }
    for (const bool caseSensitive : {true, false}) {
      TMemoryStrDataStorage storage;
      Fill(storage, {u"k", u"n"}, rows);
      storage.SortByField(0, caseSensitive, round % 3 == 0, false);
      std::vector<std::u16string> keys = Keys(storage);
      if (round % 3 == 0) std::reverse(keys.begin(), keys.end());
      auto less = [&](const std::u16string& a, const std::u16string& b) {
        const size_t n = std::min(a.size(), b.size());
        for (size_t i = 0; i < n; ++i) {
          const char16_t x = caseSensitive ? a[i] : fold(a[i]);
          const char16_t y = caseSensitive ? b[i] : fold(b[i]);
          if (x != y) return x < y;
        }
        return a.size() < b.size();
      };
      EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end(), less)) << "round " << round;
      // Every record is still there once.
      std::vector<std::u16string> numbers;
      for (const Record& r : storage.Records()) numbers.emplace_back(r.Cell(1));
      std::sort(numbers.begin(), numbers.end());
      EXPECT_EQ(std::adjacent_find(numbers.begin(), numbers.end()), numbers.end());
      EXPECT_EQ(numbers.size(), rows.size());
    }
  }
}

TEST(MemoryDataStorage, TextToFloatSyntax) {
  struct Case {
    std::u16string text;
    bool ok;
    double value;
  };
  const Case cases[] = {{u"0", true, 0},        {u"  -12.5e1\t", true, -125}, {u"+7", true, 7},
                        {u"", false, 0},        {u"  ", false, 0},            {u"1 000", false, 0},
                        {u"inf", false, 0},     {u"1e999", false, 0},         {u"12abc", false, 0}};
  for (const Case& c : cases) {
    double value = -999;
    EXPECT_EQ(TryTextToFloat(c.text, value), c.ok) << std::string(c.text.begin(), c.text.end());
    if (c.ok) {
      EXPECT_DOUBLE_EQ(value, c.value);
    }
  }
  EXPECT_EQ(NumericCompare(u"abc", u"0"), 0);
  EXPECT_EQ(NumericCompare(u"-1", u"x"), -1);
  EXPECT_EQ(NumericCompare(u"10", u"9"), 1);
}

}  // namespace
}  // namespace qm
