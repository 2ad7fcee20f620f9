// The in-memory table: padding, column operations, sorting and the list's own
// index errors.
#include <gtest/gtest.h>

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
