#include "task_interface.h"

#include <cstdlib>
#include <cstring>
#include <utility>

#include "host.h"
#include "host_memory.h"
#include "transcript.h"

namespace qmhost {

namespace {

bool SameGuid(const QmGuid* a, const QmGuid& b) { return std::memcmp(a, &b, sizeof b) == 0; }

int64_t g_outstandingItems = 0;

// Reserved methods the plug-in must never call end the run loudly.
template <int N>
void Unexpected(void*) {
  Print("qmhost: the plug-in called method " + std::to_string(N) + " of a host interface, which it must not use");
  std::exit(4);
}

// Fills reserved slots first..first+count-1.
template <int First, size_t Count, int... I>
void FillReserved(void* (&slots)[Count], std::integer_sequence<int, I...>) {
  ((slots[I] = reinterpret_cast<void*>(&Unexpected<First + I>)), ...);
}
template <int First, size_t Count>
void FillReserved(void* (&slots)[Count]) {
  FillReserved<First>(slots, std::make_integer_sequence<int, static_cast<int>(Count)>());
}

// --- a step item, handed out by GetStep ---

struct ItemObject : IQmTaskItem {
  TaskSteps* task;
  int32_t step;
  int64_t references;
};

ItemObject* Item(IQmTaskItem* self) { return static_cast<ItemObject*>(self); }

int32_t ItemQueryInterface(IQmTaskItem*, const QmGuid*, void** out) {
  *out = nullptr;
  return QM_E_NOINTERFACE;
}
uint32_t ItemAddRef(IQmTaskItem* self) {
  ++g_outstandingItems;
  return static_cast<uint32_t>(++Item(self)->references);
}
uint32_t ItemRelease(IQmTaskItem* self) {
  --g_outstandingItems;
  const auto left = --Item(self)->references;
  if (left == 0) delete Item(self);
  return static_cast<uint32_t>(left);
}
const char16_t* ItemParams(IQmTaskItem* self) { return Item(self)->task->BlockOf(Item(self)->step).c_str(); }
void ItemPassport(IQmTaskItem* self, TQMActionPassport* passport) {
  *passport = Item(self)->task->Passport(Item(self)->step);
}

IQmTaskItemVtbl MakeItemTable() {
  IQmTaskItemVtbl table{};
  table.QueryInterface = &ItemQueryInterface;
  table.AddRef = &ItemAddRef;
  table.Release = &ItemRelease;
  table.Params = &ItemParams;
  FillReserved<4>(table.Reserved4);
  table.Passport = &ItemPassport;
  return table;
}
const IQmTaskItemVtbl kItemTable = MakeItemTable();

// --- the task interface ---

TaskInterface* Bridge(IQmTaskBridge* self) { return static_cast<TaskInterface*>(self); }

int32_t BridgeQueryInterface(IQmTaskBridge* self, const QmGuid* iid, void** out) {
  const bool refuse = Host::Instance().options.refuseBridge;
  if (SameGuid(iid, kQmIidUnknown) || (!refuse && SameGuid(iid, kQmIidTaskBridge))) {
    ++Bridge(self)->references;
    *out = self;
    return kQmOk;
  }
  *out = nullptr;
  return QM_E_NOINTERFACE;
}
uint32_t BridgeAddRef(IQmTaskBridge* self) { return static_cast<uint32_t>(++Bridge(self)->references); }
uint32_t BridgeRelease(IQmTaskBridge* self) {
  TaskInterface* bridge = Bridge(self);
  const auto left = --bridge->references;
  if (left == 0 && bridge->orphaned) delete bridge;
  return static_cast<uint32_t>(left);
}
int32_t BridgeTaskId(IQmTaskBridge* self) { return Bridge(self)->task.TaskId(); }
int32_t BridgeStepCount(IQmTaskBridge* self) { return Bridge(self)->task.StepCount(); }

void BridgeGetStep(IQmTaskBridge* self, IQmTaskItem** out, int32_t index) {
  TaskSteps& task = Bridge(self)->task;
  if (index < 0 || index >= task.StepCount()) {
    *out = nullptr;
    return;
  }
  auto* item = new ItemObject{{&kItemTable}, &task, index, 1};
  ++g_outstandingItems;
  *out = item;
}

void BridgeSetNextStep(IQmTaskBridge* self, int32_t step) { Bridge(self)->task.SetNextStep(step); }

void BridgeGetPrivateVariable(IQmTaskBridge* self, char16_t** value, const char16_t* name) {
  const auto& vars = Bridge(self)->task.privateVariables;
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

void BridgeSetPrivateVariable(IQmTaskBridge* self, const char16_t* name, const char16_t* value) {
  Bridge(self)->task.privateVariables[std::u16string(Z(name))] = std::u16string(Z(value));
}

void BridgeLog(IQmTaskBridge*, uint8_t infoType, const char16_t* text) {
  Host::Instance().Event("  log task " + std::string(LevelName(infoType)) + ": " + Quote(Z(text)));
}

IQmTaskBridgeVtbl MakeBridgeTable() {
  IQmTaskBridgeVtbl table{};
  table.QueryInterface = &BridgeQueryInterface;
  table.AddRef = &BridgeAddRef;
  table.Release = &BridgeRelease;
  FillReserved<3>(table.Reserved3);
  table.TaskId = &BridgeTaskId;
  FillReserved<8>(table.Reserved8);
  table.StepCount = &BridgeStepCount;
  table.GetStep = &BridgeGetStep;
  FillReserved<16>(table.Reserved16);
  table.SetNextStep = &BridgeSetNextStep;
  table.GetPrivateVariable = &BridgeGetPrivateVariable;
  table.SetPrivateVariable = &BridgeSetPrivateVariable;
  FillReserved<22>(table.Reserved22);
  table.Log = &BridgeLog;
  return table;
}
const IQmTaskBridgeVtbl kBridgeTable = MakeBridgeTable();

}  // namespace

TaskInterface::TaskInterface(TaskSteps& steps) : IQmTaskBridge{&kBridgeTable}, task(steps) {}

int64_t OutstandingStepItems() { return g_outstandingItems; }

}  // namespace qmhost
