// A host for calling executors directly: the plug-in's host record with
// callbacks that keep what the plug-in reports, and a task interface with
// its own private variables. One host per test program (the plug-in accepts
// one initialisation per process); Reset() clears what a test left behind.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "plugin/task_bridge.h"

namespace qm::testing {

struct HostRecord {
  // General log lines and task log lines, as "<level> <text>".
  std::vector<std::u16string> generalLog;
  std::vector<std::u16string> taskLog;
  std::map<std::u16string, std::u16string> variables;
  uint32_t lastErrorCode = 0;
  std::u16string lastErrorText;
  int errorReports = 0;
};

// The host's record, initialising the plug-in on first use.
HostRecord& Host();
void ResetHost();

// A task interface whose private variables live until the test ends.
class FakeTask {
 public:
  FakeTask();
  ~FakeTask();
  FakeTask(const FakeTask&) = delete;
  FakeTask& operator=(const FakeTask&) = delete;

  QmTaskBridge& Bridge() { return bridge_; }

 private:
  struct Object;
  Object* object_;
  QmTaskBridge bridge_;
};

}  // namespace qm::testing
