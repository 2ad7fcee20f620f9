// Runs a task: steps in order, plug-in steps through the action table, the
// host's own built-ins, loops, SetNextStep, and job stop at the end.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "abi/host_abi.h"
#include "core/action_catalogue.h"
#include "task_file.h"
#include "task_interface.h"

namespace qmhost {

struct RunResult {
  bool ok = true;
  std::string failure;   // set when !ok
  bool refused = false;  // a value refused as its step was about to run
};

class TaskRunner : public TaskSteps {
 public:
  TaskRunner(const TAFPluginInfo& plugin, const TaskFile& file, int32_t taskId);
  RunResult Run(uint64_t maxSteps);
  // A value that does not fit its key once expanded is only a warning.
  bool lenientValues = false;
  // The running step on stderr once a second.
  bool showProgress = false;

  // What the task interface answers from.
  int32_t TaskId() const override { return taskId_; }
  int32_t StepCount() const override { return static_cast<int32_t>(steps_.size()); }
  TQMActionPassport Passport(int32_t step) const override;
  const std::u16string& BlockOf(int32_t step) const override { return blocks_[static_cast<size_t>(step)]; }
  void SetNextStep(int32_t step) override { nextStep_ = step; }

 private:
  int32_t ActionIndex(const std::string& id) const;
  // The host record for a step's block (a copy the plug-in may read).
  TAFActionParams ParamsFor(std::u16string& block, int32_t step) const;
  int32_t StepType(int32_t step) const;
  int32_t EnclosingLoop(int32_t step) const;  // the begin-loop step a step belongs to, or -1
  bool RunBuiltin(int32_t step, std::string& failure);
  // Runs a plug-in action for the host's own use, with nothing it reports
  // in the transcript; false with the plug-in's error text in `error`.
  bool RunMuted(qm::Action action, std::u16string block, int32_t step, std::string& error);
  // Prints the first records of the task's table, read without changing it.
  bool ShowTable(int32_t step, std::string& failure);
  void JobStop();

  const TAFPluginInfo& plugin_;
  const TaskFile& file_;
  const std::vector<TaskStep>& steps_;
  std::vector<std::u16string> blocks_;
  std::vector<int32_t> actionIndex_;  // per step: catalogue index, or -1 for a built-in
  std::vector<bool> commentsShown_;   // a step's comments print before its first run only
  std::vector<uint64_t> runs_;        // per step: how often it has started
  int32_t taskId_;
  int32_t nextStep_ = -1;
  TaskInterface* bridge_ = nullptr;
};

}  // namespace qmhost
