// The tests' task: qmhost's own host (allocator, variables, transcript) and
// task interface, over a list of step types, with the data module's
// catalogue initialised once per program.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "abi/host_abi.h"
#include "boundary/task_bridge.h"
#include "task_interface.h"

namespace qm::test {

// The transcript lines the host printed since the last call.
std::vector<std::string> TakeTranscript();

class FakeTask : public qmhost::TaskSteps {
 public:
  // One step per entry of `stepTypes` (atSimple, atBeginLoop, atEndLoop, or
  // any 32-bit value: only its low byte should count).
  explicit FakeTask(std::vector<int32_t> stepTypes = {}, int32_t taskId = 1);
  ~FakeTask() override;

  // A counted reference, as the dispatcher holds one during a call.
  QmTaskBridge Bridge();
  // References the plug-in holds now.
  int64_t References() const { return interface_.references - 1; }

  // Runs the action of catalogue `index` as step `step` with a block of
  // name=value lines; the action's result.
  bool Exec(int32_t index, int32_t step, std::u16string_view block);
  void JobStop(int32_t index, int32_t step);

  int32_t TaskId() const override { return taskId; }
  int32_t StepCount() const override { return static_cast<int32_t>(stepTypes.size()); }
  TQMActionPassport Passport(int32_t step) const override;
  const std::u16string& BlockOf(int32_t) const override { return noBlock_; }
  void SetNextStep(int32_t step) override;

  std::vector<int32_t> stepTypes;
  int32_t taskId;
  int32_t nextStep = -1;
  int32_t setNextStepCalls = 0;

 private:
  qmhost::TaskInterface interface_{*this};
  std::u16string noBlock_;
};

}  // namespace qm::test
