// The loop over table rows: how it follows a table that changes between
// passes, and the task-private slot it is kept in (the golden loop tasks
// cover which rows it visits).
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/convert.h"
#include "loop/csv_loop.h"
#include "fake_task.h"
#include "table/simple_csv_object.h"

namespace qm {
namespace {

using test::FakeTask;

TEST(CSVLoop, FollowsRowsDeletedAndAppendedBetweenPasses) {
  FakeTask task({atBeginLoop, atEndLoop});
  TSimpleCSVDataClass table;
  ASSERT_TRUE(table.LoadFromStrings({u"a", u"b", u"c", u"d"}));
  TCSVLoopClass loop(task.Bridge(), 1, 0);
  loop.SetCSVobject(&table);

  ASSERT_TRUE(loop.GetNextItem());
  EXPECT_EQ(loop.CurrentRow()->Cell(0), u"a");
  // Deleting the current row: the row that moves into its place is skipped.
  ASSERT_TRUE(table.RemoveRow(0));
  ASSERT_TRUE(loop.GetNextItem());
  EXPECT_EQ(loop.CurrentRow()->Cell(0), u"c");
  EXPECT_EQ(loop.CurrentRowNum(), 1);
  // A row appended at the end is visited.
  ASSERT_TRUE(table.AddRow(Record(std::vector<std::u16string_view>{u"e"})));
  ASSERT_TRUE(loop.GetNextItem());
  EXPECT_EQ(loop.CurrentRow()->Cell(0), u"d");
  ASSERT_TRUE(loop.GetNextItem());
  EXPECT_EQ(loop.CurrentRow()->Cell(0), u"e");
  // Emptying the table ends the loop on the next pass.
  table.ClearData();
  EXPECT_FALSE(loop.GetNextItem());
  EXPECT_EQ(task.nextStep, 2);
}

}  // namespace
}  // namespace qm
