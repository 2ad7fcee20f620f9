// The loop over table rows: which rows it visits, how it follows a table that
// changes between passes, and the task-private slot it is kept in.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/convert.h"
#include "core/errors.h"
#include "loop/csv_loop.h"
#include "test_host.h"
#include "table/simple_csv_object.h"

namespace qm {
namespace {

using test::FakeTask;

void Load(TSimpleCSVDataClass& table, const std::vector<std::u16string>& lines) {
  table.SetDelimiter(u';');
  ASSERT_TRUE(table.LoadFromStrings(lines));
}

// The first cells of the rows the loop visits, with the row numbers.
std::u16string Visit(TCSVLoopClass& loop, int limit = 100) {
  std::u16string seen;
  while (limit-- > 0 && loop.GetNextItem()) {
    seen += loop.CurrentRow()->Cell(0);
    seen += u"@" + std::u16string(1, static_cast<char16_t>(u'0' + loop.CurrentRowNum())) + u" ";
  }
  return seen;
}

TEST(CSVLoop, VisitsTheRowsThatPassItsConditions) {
  struct Case {
    const char* what;
    std::vector<std::u16string> conditions;
    bool orMode;
    std::u16string seen;
  };
  const Case cases[] = {
      {"no conditions: every row", {}, false, u"apple@0 banana@1 cherry@2 date@3 "},
      {"one substring", {u"1,an,0,0"}, false, u"banana@1 "},
      {"AND of two", {u"1,a,0,0", u"1,e,0,0"}, false, u"apple@0 date@3 "},
      {"OR of two", {u"1,ch,0,0", u"1,^d,0,1"}, true, u"cherry@2 date@3 "},
      {"case-sensitive", {u"1,A,1,0"}, false, u""},
      {"second column", {u"2,2,0,0"}, false, u"banana@1 "},
  };
  for (const Case& c : cases) {
    FakeTask task({atBeginLoop, atSimple, atEndLoop, atSimple});
    TSimpleCSVDataClass table;
    Load(table, {u"apple;1", u"banana;2", u"cherry;3", u"date;4"});
    TCSVLoopClass loop(task.Bridge(), task.taskId, 0);
    loop.SetCSVobject(&table);
    loop.SetOrFilterMode(c.orMode);
    EXPECT_EQ(loop.OrFilterMode(), c.orMode);
    for (const auto& line : c.conditions) loop.AddFilter(line);
    EXPECT_EQ(Visit(loop), c.seen) << c.what;
    EXPECT_EQ(task.nextStep, 3) << c.what;
    EXPECT_FALSE(loop.IsInited()) << c.what;
  }
}

TEST(CSVLoop, FollowsRowsDeletedAndAppendedBetweenPasses) {
  FakeTask task({atBeginLoop, atEndLoop});
  TSimpleCSVDataClass table;
  Load(table, {u"a", u"b", u"c", u"d"});
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

TEST(CSVLoop, WithoutATableThereAreNoRows) {
  FakeTask task({atBeginLoop, atEndLoop});
  TCSVLoopClass loop(task.Bridge(), 1, 0);
  EXPECT_EQ(loop.CurrentRow(), nullptr);
  EXPECT_THROW(loop.CheckFilters(), EListError);
  EXPECT_FALSE(loop.GetNextItem());
  EXPECT_EQ(task.nextStep, 2);
}

TEST(CSVLoop, ConditionErrorsLeaveThePass) {
  FakeTask task({atBeginLoop, atEndLoop});
  TSimpleCSVDataClass table;
  // A second row shorter than the first, as a loaded table never has.
  table.Storage().AppendRecord(Record(std::vector<std::u16string_view>{u"a", u"b"}));
  table.Storage().AppendRecord(Record(std::vector<std::u16string_view>{u"c"}));
  TCSVLoopClass loop(task.Bridge(), 1, 0);
  loop.SetCSVobject(&table);
  EXPECT_THROW(loop.AddFilter(u"x,abc,0,0"), EConvertError);
  loop.AddFilter(u"2,b,0,0");
  EXPECT_TRUE(loop.GetNextItem());
  // The second row has no second cell.
  try {
    loop.GetNextItem();
    FAIL() << "no error";
  } catch (const EListError& e) {
    EXPECT_EQ(e.Message(), u"List index out of bounds (1)");
  }
  EXPECT_EQ(task.setNextStepCalls, 0);
}

TEST(CSVLoop, SlotNameHoldsPrefixAndSuffix) {
  EXPECT_EQ(CSVLoopVariable(42, 3), u"0000002A_0003_$CSVLOOP$");
  EXPECT_EQ(CSVLoopVariable(1, 0x10000), u"00000001_10000_$CSVLOOP$");
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
