// A small in-process host for the executor, loop and filter tests: the host callbacks
// (allocator with size checks, {name} expansion, variables, errors) behind the
// plug-in's own catalogue, and a task interface with steps, private
// variables, SetNextStep and a reference count, so that tests can run the
// actions through the same entry points the host uses and look at what the
// host would see.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "abi/host_abi.h"
#include "boundary/task_bridge.h"

namespace qm::test {

struct TestHost {
  std::map<std::u16string, std::u16string> variables;
  // What the plug-in did, one line each: "set n=1", "error 1: ...".
  std::vector<std::u16string> events;
  std::map<void*, int32_t> blocks;
  int badFrees = 0;
  // Called on every expansion result before the plug-in sees it (the fuzz
  // target keeps file names inside its own folder this way).
  void (*expansionFilter)(std::u16string& text) = nullptr;
};

TestHost& Host();
// The data module's catalogue, initialised once per process with Host().
const TAFActionsInfo& Actions();

class FakeTask {
 public:
  // One step per entry of `stepTypes` (atSimple, atBeginLoop, atEndLoop, or
  // any 32-bit value: only its low byte should count).
  explicit FakeTask(std::vector<int32_t> stepTypes = {}, int32_t taskId = 1);
  ~FakeTask();
  FakeTask(const FakeTask&) = delete;
  FakeTask& operator=(const FakeTask&) = delete;

  // The object handed to the plug-in as the task interface.
  void* Interface() { return &com_; }
  // A counted reference, as the dispatcher holds one during a call.
  QmTaskBridge Bridge();
  // References the plug-in holds now.
  int64_t References() const { return references_; }

  // Runs the action of catalogue `index` as step `step` with a block of
  // name=value lines; the action's result.
  bool Exec(int32_t index, int32_t step, std::u16string_view block);
  void JobStop(int32_t index, int32_t step, std::u16string_view block = {});

  std::vector<int32_t> stepTypes;
  int32_t taskId;
  std::map<std::u16string, std::u16string> privateVariables;
  int32_t nextStep = -1;
  int32_t setNextStepCalls = 0;
  int32_t passportReads = 0;
  int64_t itemsOutstanding = 0;
  // The task's log, one "<level> <text>" line each.
  std::vector<std::u16string> log;

 private:
  TAFActionParams Params(std::u16string& text, int32_t step) const;
  struct Com {
    void* const* table;
    FakeTask* owner;
  };
  friend struct FakeTaskMethods;
  Com com_;
  int64_t references_ = 0;
};

}  // namespace qm::test
