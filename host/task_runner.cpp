#include "task_runner.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <exception>
#include <fstream>
#include <sstream>

#include "core/utf.h"
#include "host.h"
#include "host_memory.h"
#include "transcript.h"

namespace qmhost {

namespace {

constexpr QmGuid kTaskBridgeGuid = {0x5C1D7A20, 0x3E84, 0x4B9F, {0xA6, 0xD2, 0x71, 0xF0, 0xC8, 0xE3, 0xB9, 0x45}};
constexpr QmGuid kUnknownGuid = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr int32_t kNoInterface = static_cast<int32_t>(0x80004002u);

bool SameGuid(const QmGuid* a, const QmGuid& b) { return std::memcmp(a, &b, sizeof b) == 0; }

// A COM-style object: its first word is the method table.
struct ComObject {
  void* const* table;
  int64_t references;
};

int64_t g_outstandingItems = 0;

// Methods the plug-in must never call end the run loudly.
template <int N>
void Unexpected(void*) {
  Print("qmhost: the plug-in called method " + std::to_string(N) + " of a host interface, which it must not use");
  std::exit(4);
}

template <int... N>
constexpr std::array<void*, sizeof...(N)> UnexpectedTable(std::integer_sequence<int, N...>) {
  return {reinterpret_cast<void*>(&Unexpected<N>)...};
}

// --- the task interface ---

struct BridgeObject : ComObject {
  TaskRunner* runner;
};

int32_t BridgeQueryInterface(void* self, const QmGuid* guid, void** out) {
  auto* bridge = static_cast<BridgeObject*>(self);
  const bool refuse = Host::Instance().options.refuseBridge;
  if (SameGuid(guid, kUnknownGuid) || (!refuse && SameGuid(guid, kTaskBridgeGuid))) {
    ++bridge->references;
    *out = self;
    return 0;
  }
  *out = nullptr;
  return kNoInterface;
}
uint32_t BridgeAddRef(void* self) { return static_cast<uint32_t>(++static_cast<BridgeObject*>(self)->references); }
uint32_t BridgeRelease(void* self) { return static_cast<uint32_t>(--static_cast<BridgeObject*>(self)->references); }
int32_t BridgeTaskId(void* self) { return static_cast<BridgeObject*>(self)->runner->TaskId(); }
int32_t BridgeStepCount(void* self) { return static_cast<BridgeObject*>(self)->runner->StepCount(); }
void BridgeGetStep(void* self, void** out, int32_t index);
void BridgeSetNextStep(void* self, int32_t step) { static_cast<BridgeObject*>(self)->runner->SetNextStep(step); }

void BridgeGetPrivateVariable(void* self, char16_t** value, const char16_t* name) {
  auto& vars = static_cast<BridgeObject*>(self)->runner->privateVariables;
  const auto found = vars.find(std::u16string(Z(name)));
  if (found == vars.end()) {
    *value = nullptr;
    return;
  }
  const auto bytes = static_cast<int32_t>((found->second.size() + 1) * sizeof(char16_t));
  void* block = Memory().Allocate(bytes);
  std::memcpy(block, found->second.c_str(), static_cast<size_t>(bytes));
  *value = static_cast<char16_t*>(block);
}

void BridgeSetPrivateVariable(void* self, const char16_t* name, const char16_t* value) {
  static_cast<BridgeObject*>(self)->runner->privateVariables[std::u16string(Z(name))] = std::u16string(Z(value));
}

void BridgeLog(void*, uint8_t infoType, const char16_t* text) {
  Host::Instance().Event("  log task " + std::string(LevelName(infoType)) + ": " + Quote(Z(text)));
}

std::array<void*, 24> MakeBridgeTable() {
  auto table = UnexpectedTable(std::make_integer_sequence<int, 24>());
  table[0] = reinterpret_cast<void*>(&BridgeQueryInterface);
  table[1] = reinterpret_cast<void*>(&BridgeAddRef);
  table[2] = reinterpret_cast<void*>(&BridgeRelease);
  table[7] = reinterpret_cast<void*>(&BridgeTaskId);
  table[14] = reinterpret_cast<void*>(&BridgeStepCount);
  table[15] = reinterpret_cast<void*>(&BridgeGetStep);
  table[19] = reinterpret_cast<void*>(&BridgeSetNextStep);
  table[20] = reinterpret_cast<void*>(&BridgeGetPrivateVariable);
  table[21] = reinterpret_cast<void*>(&BridgeSetPrivateVariable);
  table[23] = reinterpret_cast<void*>(&BridgeLog);
  return table;
}
const std::array<void*, 24> kBridgeTable = MakeBridgeTable();

// --- a step item, handed out by method 15 ---

struct ItemObject : ComObject {
  TaskRunner* runner;
  int32_t step;
};

int32_t ItemQueryInterface(void*, const QmGuid*, void** out) {
  *out = nullptr;
  return kNoInterface;
}
uint32_t ItemAddRef(void* self) {
  ++g_outstandingItems;
  return static_cast<uint32_t>(++static_cast<ItemObject*>(self)->references);
}
uint32_t ItemRelease(void* self) {
  auto* item = static_cast<ItemObject*>(self);
  --g_outstandingItems;
  const auto left = --item->references;
  if (left == 0) delete item;
  return static_cast<uint32_t>(left);
}
const char16_t* ItemParams(void* self) {
  auto* item = static_cast<ItemObject*>(self);
  return item->runner->BlockOf(item->step).c_str();
}
void ItemPassport(void* self, TQMActionPassport* passport) {
  auto* item = static_cast<ItemObject*>(self);
  *passport = item->runner->Passport(item->step);
}

std::array<void*, 11> MakeItemTable() {
  auto table = UnexpectedTable(std::make_integer_sequence<int, 11>());
  table[0] = reinterpret_cast<void*>(&ItemQueryInterface);
  table[1] = reinterpret_cast<void*>(&ItemAddRef);
  table[2] = reinterpret_cast<void*>(&ItemRelease);
  table[3] = reinterpret_cast<void*>(&ItemParams);
  table[10] = reinterpret_cast<void*>(&ItemPassport);
  return table;
}
const std::array<void*, 11> kItemTable = MakeItemTable();

void BridgeGetStep(void* self, void** out, int32_t index) {
  auto* bridge = static_cast<BridgeObject*>(self);
  if (index < 0 || index >= bridge->runner->StepCount()) {
    *out = nullptr;
    return;
  }
  auto* item = new ItemObject{{kItemTable.data(), 1}, bridge->runner, index};
  ++g_outstandingItems;
  *out = item;
}

// Built-in step names and their types.
int32_t BuiltinType(const std::string& name) { return name == "end-loop" ? atEndLoop : atSimple; }

bool IsBuiltin(const std::string& name) {
  return name == "end-loop" || name == "break-loop" || name == "print" || name == "set-variable" ||
         name == "show-file";
}

}  // namespace

int64_t OutstandingStepItems() { return g_outstandingItems; }

TaskRunner::TaskRunner(const TAFPluginInfo& plugin, std::vector<TaskStep> steps, int32_t taskId)
    : plugin_(plugin), steps_(std::move(steps)), taskId_(taskId) {
  for (const auto& step : steps_) {
    blocks_.push_back(step.Block());
    actionIndex_.push_back(ActionIndex(step.action));
  }
}

int32_t TaskRunner::ActionIndex(const std::string& id) const {
  if (!plugin_.ActionsInfo) return -1;
  for (int32_t i = 0; i < plugin_.ActionsInfo->ActionsCount; ++i) {
    const TAFActionInfo* info = plugin_.ActionsInfo->GetActionInfo(i);
    if (qm::Utf16ToUtf8(Z(info->ActionID)) == id) return i;
  }
  return -1;
}

TQMActionPassport TaskRunner::Passport(int32_t step) const {
  TQMActionPassport passport;
  std::memset(&passport, 0, sizeof passport);
  const int32_t index = actionIndex_[static_cast<size_t>(step)];
  if (index >= 0) {
    passport.PluginId = plugin_.ID;
    passport.Numaction = index;
    passport.info = *plugin_.ActionsInfo->GetActionInfo(index);
  } else {
    passport.Numaction = -1;
    passport.info.ActionType = BuiltinType(steps_[static_cast<size_t>(step)].action);
  }
  return passport;
}

TAFActionParams TaskRunner::ParamsFor(std::u16string& block, int32_t step) const {
  TAFActionParams params{};
  params.Size = static_cast<int32_t>((block.size() + 1) * sizeof(char16_t));
  params.PPtr = block.data();
  params.TaskID = static_cast<uint32_t>(taskId_);
  params.StepNum = step;
  return params;
}

int32_t TaskRunner::StepType(int32_t step) const { return Passport(step).info.ActionType; }

int32_t TaskRunner::EnclosingLoop(int32_t step) const {
  int depth = 0;
  for (int32_t j = step - 1; j >= 0; --j) {
    const int32_t type = StepType(j);
    if (type == atEndLoop) {
      ++depth;
    } else if (type == atBeginLoop) {
      if (depth == 0) return j;
      --depth;
    }
  }
  return -1;
}

bool TaskRunner::RunBuiltin(int32_t i, std::string& failure) {
  const TaskStep& step = steps_[static_cast<size_t>(i)];
  Host& host = Host::Instance();
  if (step.action == "end-loop" || step.action == "break-loop") {
    const int32_t loop = EnclosingLoop(i);
    if (loop < 0) {
      failure = step.action + " outside a loop";
      return false;
    }
    if (step.action == "break-loop") privateVariables[u"$$$BREAK$$$"] = u"$BREAK$LOOP$";
    nextStep_ = loop;
  } else if (step.action == "print") {
    host.Event("  " + Quote(host.Expand(step.Value(u"text"))));
  } else if (step.action == "set-variable") {
    const std::u16string name = host.Expand(step.Value(u"name"));
    const std::u16string value = host.Expand(step.Value(u"value"));
    host.variables[name] = value;
    host.Event("  set " + Quote(name) + " = " + QuoteValue(value));
  } else if (step.action == "show-file") {
    const std::string path = qm::Utf16ToUtf8(host.Expand(step.Value(u"name")));
    std::ifstream in(path, std::ios::binary);
    if (!in) {
      host.Event("  file " + path + ": missing");
    } else {
      std::stringstream bytes;
      bytes << in.rdbuf();
      const std::string content = bytes.str();
      host.Event("  file " + path + " (" + std::to_string(content.size()) + " bytes): " + QuoteBytes(content));
    }
  }
  return true;
}

RunResult TaskRunner::Run(uint64_t maxSteps) {
  Host& host = Host::Instance();
  auto* bridge = new BridgeObject{{kBridgeTable.data(), 1}, this};
  bridge_ = bridge;
  RunResult result;
  uint64_t executed = 0;
  for (int32_t i = 0; i >= 0 && i < StepCount();) {
    if (++executed > maxSteps) {
      result = {false, "more than " + std::to_string(maxSteps) + " steps run"};
      break;
    }
    const TaskStep& step = steps_[static_cast<size_t>(i)];
    const int32_t index = actionIndex_[static_cast<size_t>(i)];
    if (!host.options.quiet) host.Event("[" + std::to_string(i) + "] " + step.action);
    nextStep_ = -1;
    std::string failure;
    bool ok = true;
    if (index >= 0) {
      std::u16string block = blocks_[static_cast<size_t>(i)];
      TAFActionParams params = ParamsFor(block, i);
      host.lastErrorSet = false;
      try {
        ok = plugin_.ActionsInfo->ExecAction(index, bridge, &params) != 0;
        host.Event(ok ? "  -> true" : "  -> false");
        if (!ok) {
          failure = host.lastErrorSet ? "error " + std::to_string(host.lastErrorCode) + " " + Quote(host.lastErrorText)
                                      : "returned false";
        }
      } catch (const std::exception& e) {
        ok = false;
        failure = "exception " + Quote(qm::Utf8ToUtf16(e.what()));
        host.Event("  " + failure);
      } catch (...) {
        ok = false;
        failure = "unknown exception";
        host.Event("  " + failure);
      }
    } else if (!IsBuiltin(step.action)) {
      ok = false;
      failure = "no action " + step.action + " in the plug-in or the host";
    } else {
      ok = RunBuiltin(i, failure);
    }
    if (!ok && !step.continueOnError) {
      result = {false, "task failed at step " + std::to_string(i) + " (" + step.action + "): " + failure};
      break;
    }
    i = nextStep_ >= 0 ? nextStep_ : i + 1;
  }
  JobStop();
  if (bridge->references != 1) {
    // A loop stopped half way keeps its reference on purpose; say so, but it
    // is not a failure of the host.
    host.Event("task interface references still held by the plug-in: " + std::to_string(bridge->references - 1));
  } else {
    delete bridge;
  }
  bridge_ = nullptr;
  return result;
}

void TaskRunner::JobStop() {
  Host& host = Host::Instance();
  host.Event("job stop");
  for (int32_t i = 0; i < StepCount(); ++i) {
    const int32_t index = actionIndex_[static_cast<size_t>(i)];
    if (index < 0) continue;
    std::u16string block = blocks_[static_cast<size_t>(i)];
    TAFActionParams params = ParamsFor(block, i);
    try {
      plugin_.ActionsInfo->JobStop(index, bridge_, &params);
    } catch (const std::exception& e) {
      host.Event("  job stop of step " + std::to_string(i) + ": exception " + Quote(qm::Utf8ToUtf16(e.what())));
    }
  }
}

}  // namespace qmhost
