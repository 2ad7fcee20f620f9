// The loop engine: the slot prefix, finding the step after a loop, and what
// the golden loop tasks cannot vary: references held, break texts that are no break.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "loop/base_loop.h"
#include "fake_task.h"
#include "task_interface.h"

namespace qm {
namespace {

using test::FakeTask;

constexpr int32_t S = atSimple;
constexpr int32_t B = atBeginLoop;
constexpr int32_t E = atEndLoop;

TEST(BaseLoop, StepAfterLoopFollowsTheDepthCountFromTheLoopsOwnStep) {
  struct Case {
    const char* what;
    std::vector<int32_t> types;
    int32_t loop;
    int32_t after;
  };
  const Case cases[] = {
      {"inner of two nested loops", {S, S, B, S, B, E, E, S}, 4, 6},
      {"no end-loop step: one past the last", {B, S, S}, 0, 3},
      {"unbalanced inner loop swallows the end", {B, B, E}, 0, 3},
      {"own step not a begin-loop step", {S, S, S}, 1, 2},
      {"only the low byte of the type counts", {B, 0x301, 0x102, 0x7F02, S}, 0, 4},
      {"a type whose low byte is 0 is a plain step", {B, 0x100, 0x200, E}, 0, 4},
      {"loop step beyond the task", {S, S}, 5, 2},
  };
  for (const Case& c : cases) {
    FakeTask task(c.types);
    {
      const QmTaskBridge bridge = task.Bridge();
      EXPECT_EQ(TBaseLoop::StepAfterLoop(bridge, c.loop), c.after) << c.what;
    }
    EXPECT_EQ(qmhost::OutstandingStepItems(), 0) << c.what << ": every step item is released";
    EXPECT_EQ(task.References(), 0) << c.what;
  }
}

// A loop over a fixed number of items that records what the engine asks of it.
class CountingLoop : public TBaseLoop {
 public:
  CountingLoop(const QmTaskBridge& task, int32_t step, int32_t items, bool initOk = true)
      : TBaseLoop(task, task.TaskId(), step), items_(items), initOk_(initOk) {}
  bool IsInited() const override { return inited_; }
  bool InitLoop() override {
    calls += "I";
    inited_ = initOk_;
    return initOk_;
  }
  void DoneLoop() override {
    calls += "D";
    inited_ = false;
  }
  bool FirstItem() override {
    calls += "F";
    position = 0;
    return position < items_;
  }
  bool NextItem() override {
    calls += "N";
    return ++position < items_;
  }
  std::string calls;
  int32_t position = -1;

 private:
  int32_t items_;
  bool initOk_;
  bool inited_ = false;
};

TEST(BaseLoop, BreakRequestCountsOnlyOnceTheLoopRunsAndIsUsedUp) {
  FakeTask task({B, S, E, S});
  CountingLoop loop(task.Bridge(), 0, 10);

  // Left over before the first pass: neither read nor cleared.
  task.privateVariables[u"$$$BREAK$$$"] = u"$BREAK$LOOP$";
  EXPECT_TRUE(loop.GetNextItem());
  EXPECT_EQ(task.privateVariables[u"$$$BREAK$$$"], u"$BREAK$LOOP$");

  // The same letters in another case are no break.
  task.privateVariables[u"$$$BREAK$$$"] = u"$break$loop$";
  EXPECT_TRUE(loop.GetNextItem());
  EXPECT_EQ(task.privateVariables[u"$$$BREAK$$$"], u"$break$loop$");
  task.privateVariables[u"$$$BREAK$$$"] = u"$BREAK$LOOP$ ";
  EXPECT_TRUE(loop.GetNextItem());
  EXPECT_EQ(loop.calls, "IFNN");

  task.privateVariables[u"$$$BREAK$$$"] = u"$BREAK$LOOP$";
  EXPECT_FALSE(loop.GetNextItem());
  EXPECT_EQ(task.privateVariables[u"$$$BREAK$$$"], u"");
  EXPECT_EQ(loop.calls, "IFNND") << "a break asks for no further item";
  EXPECT_EQ(task.nextStep, 3);
  EXPECT_EQ(loop.position, 2);
}

}  // namespace
}  // namespace qm
