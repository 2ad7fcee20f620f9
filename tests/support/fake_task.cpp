#include "fake_task.h"

#include <cstring>

#include "host.h"
#include "plugin/csv_data_module.h"
#include "task/job_table.h"
#include "transcript.h"

namespace qm::test {

namespace {

std::vector<std::string> g_transcript;

// The data module lives as long as the program; its catalogue is made once.
const TAFActionsInfo& Actions() {
  static const TAFActionsInfo* actions = [] {
    qmhost::CaptureTranscript(&g_transcript);
    static TAFAppInfo app = qmhost::Host::Instance().MakeAppInfo();
    static auto* module = new TCSVDataDM();  // never destroyed: the host outlives every test
    return module->Plugin.Initialize(app)->ActionsInfo;
  }();
  return *actions;
}

TAFActionParams Params(std::u16string& text, int32_t taskId, int32_t step) {
  TAFActionParams params{};
  params.Size = static_cast<int32_t>((text.size() + 1) * sizeof(char16_t));
  params.PPtr = text.data();
  params.TaskID = static_cast<uint32_t>(taskId);
  params.StepNum = step;
  return params;
}

}  // namespace

std::vector<std::string> TakeTranscript() {
  std::vector<std::string> lines;
  lines.swap(g_transcript);
  return lines;
}

FakeTask::FakeTask(std::vector<int32_t> types, int32_t id) : stepTypes(std::move(types)), taskId(id) {
  Actions();
  TakeTranscript();
  qmhost::Host::Instance().variables.clear();
}

// A table the test attached goes with the task, as at a job stop.
FakeTask::~FakeTask() { FreeJobTable(Bridge()); }

QmTaskBridge FakeTask::Bridge() { return QmTaskBridge::Cast(static_cast<IQmTaskBridge*>(&interface_)); }

TQMActionPassport FakeTask::Passport(int32_t step) const {
  TQMActionPassport passport;
  std::memset(&passport, 0, sizeof passport);
  passport.info.ActionType = stepTypes[static_cast<size_t>(step)];
  return passport;
}

void FakeTask::SetNextStep(int32_t step) {
  nextStep = step;
  ++setNextStepCalls;
}

bool FakeTask::Exec(int32_t index, int32_t step, std::u16string_view block) {
  std::u16string text(block);
  TAFActionParams params = Params(text, taskId, step);
  return Actions().ExecAction(index, static_cast<IQmTaskBridge*>(&interface_), &params) != 0;
}

void FakeTask::JobStop(int32_t index, int32_t step) {
  std::u16string text;
  TAFActionParams params = Params(text, taskId, step);
  Actions().JobStop(index, static_cast<IQmTaskBridge*>(&interface_), &params);
}

}  // namespace qm::test
