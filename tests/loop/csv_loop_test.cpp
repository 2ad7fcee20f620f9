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

TEST(CSVLoop, SavedLoopIsFoundOnlyThroughAValidIdentity) {
  FakeTask task({atBeginLoop, atEndLoop}, 42);
  const QmTaskBridge bridge = task.Bridge();
  const std::u16string slot = u"0000002A_0003_$CSVLOOP$";

  EXPECT_EQ(FindSavedCSVLoop(bridge, 3), nullptr) << "absent";
  auto loop = std::make_unique<TCSVLoopClass>(bridge, 42, 3);
  SaveCSVLoop(bridge, 3, loop.get());
  EXPECT_EQ(task.privateVariables[slot], UIntToStr(reinterpret_cast<uintptr_t>(loop.get()))) << "its address in decimal";
  EXPECT_EQ(FindSavedCSVLoop(bridge, 3), loop.get());
  EXPECT_EQ(FindSavedCSVLoop(bridge, 4), nullptr) << "another step's slot";

  const std::u16string saved = task.privateVariables[slot];
  for (const std::u16string& bad : std::vector<std::u16string>{u"", u"0", u"abc", u"-1", u" " + saved, saved + u" ", u"+" + saved,
                                   u"99999999999999999999999", u"12"}) {
    task.privateVariables[slot] = bad;
    EXPECT_EQ(FindSavedCSVLoop(bridge, 3), nullptr) << "slot value \"" << std::string(bad.begin(), bad.end()) << '"';
  }

  task.privateVariables[slot] = saved;
  loop.reset();
  EXPECT_EQ(FindSavedCSVLoop(bridge, 3), nullptr) << "a freed loop is no loop";

  SaveCSVLoop(bridge, 3, nullptr);
  EXPECT_EQ(task.privateVariables[slot], u"0");
}

}  // namespace
}  // namespace qm
