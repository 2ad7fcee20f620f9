// The task interface the host hands to the plug-in: IQmTaskBridge of
// abi/host_abi.h over a task's steps, and the step items it gives out.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "abi/host_abi.h"

namespace qmhost {

// What the task interface answers from: qmhost's task runner, or a test's task.
class TaskSteps {
 public:
  virtual ~TaskSteps() = default;
  virtual int32_t TaskId() const = 0;
  virtual int32_t StepCount() const = 0;
  virtual TQMActionPassport Passport(int32_t step) const = 0;
  // The step's parameter block, valid as long as the task.
  virtual const std::u16string& BlockOf(int32_t step) const = 0;
  virtual void SetNextStep(int32_t step) = 0;

  std::map<std::u16string, std::u16string> privateVariables;
};

// The IQmTaskBridge object. It starts with the host's own reference; with
// Host().options.refuseBridge it answers only IUnknown.
struct TaskInterface : IQmTaskBridge {
  explicit TaskInterface(TaskSteps& task);
  TaskSteps& task;
  int64_t references = 1;
  // Set when the host has let go of an interface the plug-in still holds:
  // the plug-in's last Release then deletes it.
  bool orphaned = false;
};

// References to step items the plug-in has not released (over all tasks).
int64_t OutstandingStepItems();

}  // namespace qmhost
