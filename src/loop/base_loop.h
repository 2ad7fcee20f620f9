// The loop engine behind a begin-loop action. The host calls a begin-loop step
// once per pass and keeps nothing of ours in between, so the position lives in
// a loop object created on the first pass and found again on the later ones
// through a task-private variable. When the items run out (or the host's
// break-loop step asked for a break) the engine itself sends the task past the
// matching end-loop step.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "boundary/task_bridge.h"

namespace qm {

// The task-private variable through which the host's break-loop step asks the
// running loop to stop, and the value that means "break".
inline constexpr std::u16string_view kBreakVariable = u"$$$BREAK$$$";
inline constexpr std::u16string_view kBreakRequest = u"$BREAK$LOOP$";

class TBaseLoop {
 public:
  // Keeps a counted reference to the task interface for the loop's lifetime.
  TBaseLoop(const QmTaskBridge& ATaskIntf, int32_t ATaskID, int32_t AStep);
  virtual ~TBaseLoop();
  TBaseLoop(const TBaseLoop&) = delete;
  TBaseLoop& operator=(const TBaseLoop&) = delete;

  int32_t Jobid() const noexcept { return FJobID; }
  const QmTaskBridge& TaskInterface() const noexcept { return FTaskIntf; }
  int32_t StepNum() const noexcept { return FStepNum; }
  bool InitError() const noexcept { return FInitError; }
  std::u16string Prefix() const { return GetPrefix(FJobID, FStepNum); }

  // True while the loop runs: after InitLoop, before DoneLoop.
  virtual bool IsInited() const = 0;
  // Prepares a first pass; false when the loop cannot run.
  virtual bool InitLoop() = 0;
  // Marks the loop finished.
  virtual void DoneLoop() = 0;
  // Moves to the first item; true when there is one.
  virtual bool FirstItem() = 0;
  // Moves to the next item; true when there is one.
  virtual bool NextItem() = 0;

  // Advances by one item: the first item on the first pass, the next one
  // later. A break request counts only once the loop runs, and is used up.
  // When there is no item, the task's next step is set past the matching
  // end-loop step and the loop is marked done before false is returned.
  bool GetNextItem();
  void StopLoop();

  // The key prefix of a loop's task-private variables: the task identifier in
  // upper-case hexadecimal, at least 8 digits, "_", the step number, at least
  // 4 digits, "_" (task 42, step 3: 0000002A_0003_).
  static std::u16string GetPrefix(int32_t ATaskID, int32_t AStepNum);
  // The same prefix written to `out`, which has room for kMaxPrefixUnits;
  // returns its length. For names built on every pass without the heap.
  static constexpr size_t kMaxPrefixUnits = 18;
  static size_t WritePrefix(int32_t ATaskID, int32_t AStepNum, char16_t* out) noexcept;

  // The step to run once the loop at `loopStep` is over: the one after its
  // matching end-loop step, found by counting begin- and end-loop steps from
  // the loop's own step on; one past the last step when there is no match
  // (which ends the task), and 1 for a task without steps.
  static int32_t StepAfterLoop(const QmTaskBridge& task, int32_t loopStep);

 private:
  bool FInitError = false;
  int32_t FJobID;
  int32_t FStepNum;
  QmTaskBridge FTaskIntf;
};

}  // namespace qm
