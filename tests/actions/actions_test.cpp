// Executors called directly with a fake host: the table refusals that a task
// cannot provoke (every record a task can build has a cell for every field),
// and Remove Duplicates against a plain reference on many rows.
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "actions/add_column.h"
#include "actions/move_column.h"
#include "actions/read_write_cells.h"
#include "actions/remove_duplicates.h"
#include "actions/sort_by_column.h"
#include "core/case_fold.h"
#include "core/utf.h"
#include "boundary/plugin_params.h"
#include "core/delimited_text.h"
#include "task/job_table.h"
#include "table/simple_csv_object.h"
#include "fake_task.h"

namespace qm {
namespace {

using test::FakeTask;
using test::TakeTranscript;
using Lines = std::vector<std::string>;

using Executor = bool (*)(QmTaskBridge&, TQMPluginParams&);

std::vector<std::vector<std::u16string>> Rows(TSimpleCSVDataClass& table) {
  std::vector<std::vector<std::u16string>> rows;
  for (int32_t r = 0; r < table.RecordCount(); ++r) {
    std::vector<std::u16string> cells;
    const Record& record = *table.GetRow(r);
    for (int32_t c = 0; c < record.Count(); ++c) cells.emplace_back(record.Cell(c));
    rows.push_back(std::move(cells));
  }
  return rows;
}

// A three-field table (records a;b;c, 1;2;3 and 4;5;6) whose second record
// was cut to one cell by hand.
std::unique_ptr<TSimpleCSVDataClass> ShortRecordTable() {
  auto table = std::make_unique<TSimpleCSVDataClass>();
  EXPECT_TRUE(table->LoadFromText(u"a;b;c\r\n1;2;3\r\n4;5;6\r\n"));
  table->GetRow(1)->Delete(2);
  table->GetRow(1)->Delete(1);
  return table;
}

TEST(ActionRefusals, TableRefusalsAreReportedWithEachActionsCode) {
  struct Case {
    const char* name;
    Executor execute;
    const char16_t* block;
    const char* code;
    const char* message;
  };
  const Case cases[] = {
      {"read cell", &ExecReadCells, u"cellcount=1\r\nrow0=2\r\ncol0=2\r\nval0=v", "4", "List index out of bounds (1)"},
      {"write cell", &ExecWriteCells, u"cellcount=1\r\nrow0=2\r\ncol0=3\r\nval0=v", "4",
       "List index out of bounds (2)"},
      {"add column", &ExecAddColumn, u"totheend=0\r\nposition=3", "4", "List index out of bounds (2)"},
      {"move column", &ExecMoveColumn, u"frompos=3\r\ntopos=1", "5", "List index out of bounds (2)"},
      {"sort", &ExecSortByColumn, u"sortcolumn=2", "4", "List index out of bounds (1)"},
  };
  for (const Case& c : cases) {
    FakeTask task;
    QmTaskBridge bridge = task.Bridge();
    AttachJobTable(bridge, ShortRecordTable());
    TQMPluginParams params(c.block);
    EXPECT_FALSE(c.execute(bridge, params)) << c.name;
    const std::string quoted = std::string("\"") + c.message + "\"";
    EXPECT_EQ(TakeTranscript(), (Lines{"  last error " + std::string(c.code) + " (task 1): " + quoted,
                                       "  log host error: the last error's text", "  log task error: " + quoted}))
        << c.name;
  }
}

TEST(ActionRefusals, WorkDoneBeforeARefusalStays) {
  FakeTask task;
  QmTaskBridge bridge = task.Bridge();
  TSimpleCSVDataClass* table = AttachJobTable(bridge, ShortRecordTable());
  // The first record gets its new cell before the short one refuses.
  TQMPluginParams insert(u"totheend=0\r\nposition=3\r\ncolumnname=n\r\nfillmode=2\r\ncolumnvalue=x");
  EXPECT_FALSE(ExecAddColumn(bridge, insert));
  EXPECT_EQ(Rows(*table)[0], (std::vector<std::u16string>{u"a", u"b", u"x", u"c"}));
  EXPECT_EQ(Rows(*table)[1], (std::vector<std::u16string>{u"1"}));
  // Entries before the refused one are written.
  TQMPluginParams write(u"cellcount=2\r\nrow0=3\r\ncol0=1\r\nval0=w\r\nrow1=2\r\ncol1=3\r\nval1=z");
  EXPECT_FALSE(ExecWriteCells(bridge, write));
  EXPECT_EQ(Rows(*table)[2][0], u"w");
}

// Keeps the last row of each set of equal keys, as a list walked bottom up.
std::vector<std::vector<std::u16string>> ReferenceDistinct(const std::vector<std::vector<std::u16string>>& rows,
                                                           bool caseSensitive, int32_t& deleted) {
  std::set<std::u16string> seen;
  std::vector<std::vector<std::u16string>> kept;
  deleted = 0;
  for (size_t i = rows.size(); i-- > 0;) {
    std::u16string key = JoinDelimited(rows[i], kCommaText);
    if (!caseSensitive) {
      std::u16string folded;
      FoldCase(key, folded);
      key = folded;
    }
    if (seen.insert(key).second) {
      kept.insert(kept.begin(), rows[i]);
    } else {
      ++deleted;
    }
  }
  return kept;
}

TEST(RemoveDuplicates, MatchesAPlainReferenceOnManyRows) {
  // ASCII and other letters in both cases (some of whose other case lies
  // above U+00FF, so that rows kept one byte a character equal rows kept in
  // UTF-16), cells that the comma text quotes,
  // a supplementary letter in both cases, and lone surrogate halves that a
  // folding of the whole row (rather than of each cell) would wrongly pair.
  const std::u16string high(1, char16_t{0xD801}), low(1, char16_t{0xDC00}), lowFolded(1, char16_t{0xDC28});
  const std::u16string pieces[] = {u"a", u"A", u"ä", u"Ä", u"x,y", u"", u"\"q\"", u"σ", u"Σ", u"b c", high, low,
                                   lowFolded, u"\U00010400", u"\U00010428", u"x" + high,
                                   // kept one byte a character or not, with letters that fold across
                                   u"\u00FF", u"\u0178", u"\u00B5", u"\u039C", u"\u00E9;", u"k", u"\u212A"};
  std::mt19937 random(12345);
  for (const bool caseSensitive : {false, true}) {
    std::vector<std::vector<std::u16string>> rows;
    auto owned = std::make_unique<TSimpleCSVDataClass>();  // no fields: records keep their own lengths
    TSimpleCSVDataClass* table = owned.get();
    for (int i = 0; i < 6000; ++i) {
      std::vector<std::u16string> cells(1 + random() % 2);
      for (auto& cell : cells) cell = pieces[random() % std::size(pieces)];
      std::vector<std::u16string_view> views(cells.begin(), cells.end());
      ASSERT_TRUE(table->AddRow(Record(views)));
      rows.push_back(std::move(cells));
    }
    int32_t expectedDeleted = 0;
    const auto expected = ReferenceDistinct(rows, caseSensitive, expectedDeleted);
    ASSERT_GT(expectedDeleted, 1000);

    FakeTask task;
    QmTaskBridge bridge = task.Bridge();
    AttachJobTable(bridge, std::move(owned));
    TQMPluginParams params(caseSensitive ? u"casesensitive=1\r\nvarname= n " : u"varname=n");
    EXPECT_TRUE(ExecRemoveDuplicates(bridge, params));
    EXPECT_EQ(Rows(*table), expected) << "case sensitive " << caseSensitive;
    EXPECT_EQ(TakeTranscript(), Lines{"  set \"n\" = \"" + std::to_string(expectedDeleted) + "\""});
  }
}

}  // namespace
}  // namespace qm
