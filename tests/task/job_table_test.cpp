#include "task/job_table.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/convert.h"
#include "loop/csv_loop.h"
#include "table/simple_csv_object.h"
#include "task/live_objects.h"
#include "fake_task.h"

namespace qm {
namespace {

using test::FakeTask;

constexpr std::u16string_view kSlot = u"$CSV_OBJECT$";

// The task-private value is the host's to keep and anyone's to change: only
// the number of the live table means a table; every other value means none,
// as "0" does, and a Save step then reports that there is no data.
TEST(JobTable, OnlyTheLiveTablesNumberNamesIt) {
  FakeTask task({atSimple});
  const QmTaskBridge bridge = task.Bridge();
  TSimpleCSVDataClass* table = AttachJobTable(bridge, std::make_unique<TSimpleCSVDataClass>());
  const std::u16string live = task.privateVariables[std::u16string(kSlot)];
  EXPECT_EQ(live, UIntToStr(reinterpret_cast<uintptr_t>(table))) << "its address in decimal";
  EXPECT_EQ(GetJobTable(bridge), table);

  std::u16string freed;
  {
    FakeTask other({atSimple});
    AttachJobTable(other.Bridge(), std::make_unique<TSimpleCSVDataClass>());
    freed = other.privateVariables[std::u16string(kSlot)];
  }  // its job stop freed the table
  const TCSVLoopClass* loop = SaveCSVLoop(bridge, 1, std::make_unique<TCSVLoopClass>(bridge, 1, 0));
  const std::vector<std::u16string> values = {u"",
                                              u"0",
                                              u"12345",
                                              u"4096",
                                              u"18446744073709551615",
                                              u"-1",
                                              u"abc",
                                              u" " + live,
                                              live + u"0",
                                              freed,
                                              UIntToStr(LiveObjects::NumberOf(loop))};
  for (const std::u16string& value : values) {
    task.privateVariables[std::u16string(kSlot)] = value;
    EXPECT_EQ(GetJobTable(bridge), nullptr) << "value \"" << std::string(value.begin(), value.end()) << '"';
    test::TakeTranscript();
    EXPECT_FALSE(task.Exec(12, 0, u"savetovariable=1\nsavevariable=v"));
    const auto lines = test::TakeTranscript();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(
        lines.front(),
        "  last error 1 (task 1): \"CSV data is not defined. First you must read the CSV data from a file or from "
        "text.\"");
  }
  task.privateVariables[std::u16string(kSlot)] = live;
  FreeJobTable(bridge);
  EXPECT_EQ(task.privateVariables[std::u16string(kSlot)], u"0");
  EXPECT_EQ(LiveObjects::Instance().Find<TSimpleCSVDataClass>(LiveObjects::NumberOf(table)), nullptr) << "freed";

  // A loop is handed back only from its own step's slot, and only once.
  EXPECT_EQ(TakeSavedCSVLoop(bridge, 2), nullptr);
  EXPECT_EQ(TakeSavedCSVLoop(bridge, 1).get(), loop);
  EXPECT_EQ(TakeSavedCSVLoop(bridge, 1), nullptr);
}

}  // namespace
}  // namespace qm
