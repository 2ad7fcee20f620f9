// The in-memory table: padding, column operations, sorting and the list's own
// index errors.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

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
  EXPECT_EQ(Rows(storage),
            (std::vector<Cells>{{u"1", u"2", u"", u""}, {u"1", u"2", u"3", u"4", u"5", u"6"}, {u"", u"", u"", u""}}));
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

// Loaded records live in the storage's arena; a column step rebuilds them all
// into a new one and gives the old one back, so nothing may still point there.
TEST(MemoryDataStorage, ColumnStepsRebuildLoadedRecords) {
  TMemoryStrDataStorage storage;
  storage.MakeUpFieldNames(3);
  // Rows of one byte a character and of UTF-16, on both sides of 256
  // characters (the size of their cell ends).
  auto firstCell = [](int row) {
    return u"r" + std::u16string(static_cast<size_t>(row % 300), row % 7 == 0 ? u'\u0416' : u'x');
  };
  for (int row = 0; row < 3000; ++row) {
    const std::u16string text = firstCell(row) + u"bc";
    const auto first = static_cast<uint32_t>(text.size() - 2);
    const uint32_t ends[] = {first, first + 1, first + 2};
    storage.AppendRecord(Record::InArena(storage.Arena(), text, ends));
  }
  storage.RemoveColumn(1);
  storage.InsertColumn(0, ColumnFill::RowNumber, u"n", u"");
  storage.MoveColumn(0, 2);
  // Memory given back is handed out again: were a record left in it, this
  // would overwrite its cells (and the sanitizers' build reports the use).
  RecordArena other;
  for (int k = 0; k < 1000; ++k) std::memset(other.Allocate(1024), 'z', 1024);
  auto number = [](int row) {
    const std::string digits = std::to_string(row + 1);
    return std::u16string(digits.begin(), digits.end());
  };
  const int rows[] = {0, 1, 7, 254, 255, 299, 2999};
  for (const int row : rows) {
    EXPECT_EQ(CellsOf(storage.GetDataRecord(row)), (Cells{firstCell(row), u"c", number(row)})) << row;
  }
  storage.MoveColumn(2, 0);
  for (const int row : rows) {
    EXPECT_EQ(CellsOf(storage.GetDataRecord(row)), (Cells{number(row), firstCell(row), u"c"})) << row;
  }
}

// Merged rows move from the added table with their memory, which must then
// live as long as the table they joined.
TEST(MemoryDataStorage, TakenRecordsKeepTheirMemory) {
  TMemoryStrDataStorage storage;
  Fill(storage, {u"a", u"b", u"c"}, {{u"1", u"2", u"3"}});
  {
    TMemoryStrDataStorage added;
    added.MakeUpFieldNames(3);
    for (int row = 0; row < 2000; ++row) {
      const std::u16string text = u"row" + std::u16string(static_cast<size_t>(row % 40), u'y') + u"z";
      const auto first = static_cast<uint32_t>(text.size() - 1);
      // Every other row is short: it gets its third cell when it moves.
      const uint32_t ends[] = {first, first + 1, first + 1};
      added.AppendRecord(Record::InArena(added.Arena(), text, std::span(ends, row % 2 ? 2 : 3)));
    }
    added.AppendRecord(MakeRecord({u"heap", u"x", u"y", u"long"}));
    storage.TakeRecords(added);
    EXPECT_EQ(added.RecordCount(), 0);
    EXPECT_EQ(added.FieldCount(), 3);
  }
  RecordArena other;  // handed the memory given back, if any
  for (int k = 0; k < 1000; ++k) std::memset(other.Allocate(1024), 'z', 1024);
  ASSERT_EQ(storage.RecordCount(), 2002);
  EXPECT_EQ(CellsOf(storage.GetDataRecord(0)), (Cells{u"1", u"2", u"3"}));
  for (const int row : {0, 1, 39, 1999}) {
    const Cells want{u"row" + std::u16string(static_cast<size_t>(row % 40), u'y'), u"z", u""};
    EXPECT_EQ(CellsOf(storage.GetDataRecord(row + 1)), want) << row;
  }
  EXPECT_EQ(CellsOf(storage.GetDataRecord(2001)), (Cells{u"heap", u"x", u"y", u"long"}));
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
      {"insert",
       [](auto& s) { s.InsertColumn(1, ColumnFill::Empty, u"n", u""); },
       {u"field0", u"n", u"field1", u"field2"}},
      {"append",
       [](auto& s) { s.InsertColumn(-1, ColumnFill::Empty, u"n", u""); },
       {u"field0", u"field1", u"field2", u"n"}},
      {"append, remove made-up",
       [](auto& s) {
         s.InsertColumn(3, ColumnFill::Empty, u"n", u"");
         s.RemoveColumn(2);
       },
       {u"field0", u"field1", u"n"}},
      {"rename", [](auto& s) { s.SetFieldsname(1, u"s"); }, {u"field0", u"s", u"field2"}},
      {"grow", [](auto& s) { s.SetFieldCount(5); }, {u"field0", u"field1", u"field2", u"", u""}},
      {"shrink", [](auto& s) { s.SetFieldCount(1); }, {u"field0"}},
      {"append, shrink",
       [](auto& s) {
         s.InsertColumn(-1, ColumnFill::Empty, u"n", u"");
         s.InsertColumn(-1, ColumnFill::Empty, u"m", u"");
         s.SetFieldCount(4);
       },
       {u"field0", u"field1", u"field2", u"n"}},
  };
  for (const auto& c : cases) {
    TMemoryStrDataStorage storage;
    storage.MakeUpFieldNames(3);
    c.change(storage);
    EXPECT_EQ(storage.FieldNames(), c.names) << c.name;
    EXPECT_EQ(CellsOf(storage.FieldNameRecord()), c.names) << c.name;
  }
}

// The records move whole into the order of their keys (sort_keys_test.cpp
// tests the orders); descending is the exact reverse.
TEST(MemoryDataStorage, SortMovesWholeRecordsInKeyOrder) {
  TMemoryStrDataStorage storage;
  Fill(storage, {u"k", u"n"}, {{u" 2.5 ", u"1"}, {u"-1e2", u"2"}, {u"+3", u"3"}, {u"1e", u"4"}});
  storage.SortByField(0, true, false, true);
  EXPECT_EQ(Rows(storage), (std::vector<Cells>{{u"-1e2", u"2"}, {u"1e", u"4"}, {u" 2.5 ", u"1"}, {u"+3", u"3"}}));
  storage.SortByField(0, false, true, false);
  EXPECT_EQ(Rows(storage), (std::vector<Cells>{{u"1e", u"4"}, {u"-1e2", u"2"}, {u"+3", u"3"}, {u" 2.5 ", u"1"}}));
  EXPECT_EQ(ErrorText([&] { storage.SortByField(2, true, false, false); }), u"List index out of bounds (2)");
  EXPECT_EQ(Rows(storage), (std::vector<Cells>{{u"1e", u"4"}, {u"-1e2", u"2"}, {u"+3", u"3"}, {u" 2.5 ", u"1"}}));
}

}  // namespace
}  // namespace qm
