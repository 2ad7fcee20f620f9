// Runs a task: steps in order, plug-in steps through the action table, the
// host's own built-ins, loops, SetNextStep, and job stop at the end.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "abi/host_abi.h"
#include "task_file.h"

namespace qmhost {

struct RunResult {
  bool ok = true;
  std::string failure;  // set when !ok
};

class TaskRunner {
 public:
  TaskRunner(const TAFPluginInfo& plugin, std::vector<TaskStep> steps, int32_t taskId);
  RunResult Run(uint64_t maxSteps);

  // Used by the task interface object.
  int32_t TaskId() const { return taskId_; }
  int32_t StepCount() const { return static_cast<int32_t>(steps_.size()); }
  TQMActionPassport Passport(int32_t step) const;
  const std::u16string& BlockOf(int32_t step) const { return blocks_[static_cast<size_t>(step)]; }
  void SetNextStep(int32_t step) { nextStep_ = step; }
  std::map<std::u16string, std::u16string> privateVariables;

 private:
  int32_t ActionIndex(const std::string& id) const;
  // The host record for a step's block (a copy the plug-in may read).
  TAFActionParams ParamsFor(std::u16string& block, int32_t step) const;
  int32_t StepType(int32_t step) const;
  int32_t EnclosingLoop(int32_t step) const;  // the begin-loop step a step belongs to, or -1
  bool RunBuiltin(int32_t step, std::string& failure);
  void JobStop();

  const TAFPluginInfo& plugin_;
  std::vector<TaskStep> steps_;
  std::vector<std::u16string> blocks_;
  std::vector<int32_t> actionIndex_;  // per step: catalogue index, or -1 for a built-in
  int32_t taskId_;
  int32_t nextStep_ = -1;
  void* bridge_ = nullptr;
};

// Reference counts of the interface objects handed to the plug-in that were
// never released (step items must all be released).
int64_t OutstandingStepItems();

}  // namespace qmhost
