#include "test_host.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "core/convert.h"
#include "plugin/csv_data_module.h"
#include "task/job_table.h"

namespace qm::test {

namespace {

std::u16string_view Z(const char16_t* text) {
  if (!text) return {};
  size_t n = 0;
  while (text[n]) ++n;
  return {text, n};
}

void GetMemory(void** p, int32_t size) {
  *p = std::malloc(size > 0 ? static_cast<size_t>(size) : 1);
  Host().blocks[*p] = size;
}

void FreeMemory(void** p, int32_t size) {
  const auto it = Host().blocks.find(*p);
  if (it == Host().blocks.end() || it->second != size) {
    ++Host().badFrees;
    return;
  }
  Host().blocks.erase(it);
  std::free(*p);
  *p = nullptr;
}

std::u16string Expand(std::u16string_view text) {
  std::u16string out;
  size_t i = 0;
  while (i < text.size()) {
    const size_t open = text.find(u'{', i);
    const size_t close = open == std::u16string_view::npos ? open : text.find(u'}', open);
    if (close == std::u16string_view::npos) break;
    out.append(text.substr(i, open - i));
    const auto found = Host().variables.find(std::u16string(text.substr(open + 1, close - open - 1)));
    out += found != Host().variables.end() ? found->second : std::u16string(text.substr(open, close - open + 1));
    i = close + 1;
  }
  out.append(text.substr(i));
  return out;
}

void ExpandText(const char16_t* source, char16_t* buf, int32_t* bufSize, LongBool* error) {
  std::u16string result = Expand(Z(source));
  if (Host().expansionFilter) Host().expansionFilter(result);
  const auto needed = static_cast<int32_t>((result.size() + 1) * sizeof(char16_t));
  *error = needed > *bufSize ? kLongTrue : kLongFalse;
  if (needed <= *bufSize) std::memcpy(buf, result.c_str(), static_cast<size_t>(needed));
  *bufSize = needed;
}

void SetUserVar(const char16_t* name, const char16_t* value) {
  Host().variables[std::u16string(Z(name))] = Z(value);
  Host().events.push_back(u"set " + std::u16string(Z(name)) + u"=" + std::u16string(Z(value)));
}

void SetLastError(int32_t, uint32_t code, const char16_t* text) {
  Host().events.push_back(u"error " + IntToStr(code) + u": " + std::u16string(Z(text)));
}

void InfoOut(int32_t, const char16_t*) {}

// The data module lives as long as the process; its catalogue is made once.
const TAFPluginInfo& Initialised() {
  static TAFPluginInfo* info = [] {
    TAFAppInfo app;
    std::memset(&app, 0, sizeof app);
    app.Ver = u"9.5";
    app.InfoOut = &InfoOut;
    app.QMGetMemory = &GetMemory;
    app.QMFreeMemory = &FreeMemory;
    app.ExpandText = &ExpandText;
    app.SetUserVar = &SetUserVar;
    app.AddUserVar = &SetUserVar;
    app.SetLastError = &SetLastError;
    static auto* module = new TCSVDataDM();  // never destroyed: the host outlives every test
    return module->Plugin.Initialize(app);
  }();
  return *info;
}

[[noreturn]] void Unexpected(void*) {
  std::fputs("the plug-in called a task interface method the tests do not offer\n", stderr);
  std::abort();
}

constexpr QmGuid kUnknownGuid = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

struct Item {
  void* const* table;
  FakeTask* owner;
  int32_t step;
  int32_t references;
};

}  // namespace

struct FakeTaskMethods {
  static FakeTask& Of(void* self) { return *static_cast<FakeTask::Com*>(self)->owner; }

  static int32_t QueryInterface(void* self, const QmGuid* guid, void** out) {
    if (std::memcmp(guid, &kIQmTaskBridgeGuid, sizeof(QmGuid)) == 0 || std::memcmp(guid, &kUnknownGuid, sizeof(QmGuid)) == 0) {
      ++Of(self).references_;
      *out = self;
      return 0;
    }
    *out = nullptr;
    return static_cast<int32_t>(0x80004002u);
  }
  static uint32_t AddRef(void* self) { return static_cast<uint32_t>(++Of(self).references_); }
  static uint32_t Release(void* self) { return static_cast<uint32_t>(--Of(self).references_); }
  static int32_t TaskId(void* self) { return Of(self).taskId; }
  static int32_t StepCount(void* self) { return static_cast<int32_t>(Of(self).stepTypes.size()); }
  static void GetStep(void* self, void** out, int32_t index);
  static void SetNextStep(void* self, int32_t step) {
    Of(self).nextStep = step;
    ++Of(self).setNextStepCalls;
  }
  static void GetPrivateVariable(void* self, char16_t** value, const char16_t* name) {
    const auto& vars = Of(self).privateVariables;
    const auto found = vars.find(std::u16string(Z(name)));
    if (found == vars.end()) {
      *value = nullptr;
      return;
    }
    void* block = nullptr;
    GetMemory(&block, static_cast<int32_t>((found->second.size() + 1) * sizeof(char16_t)));
    std::memcpy(block, found->second.c_str(), (found->second.size() + 1) * sizeof(char16_t));
    *value = static_cast<char16_t*>(block);
  }
  static void SetPrivateVariable(void* self, const char16_t* name, const char16_t* value) {
    Of(self).privateVariables[std::u16string(Z(name))] = Z(value);
  }
  static void Log(void* self, uint8_t level, const char16_t* text) {
    Of(self).log.push_back(IntToStr(level) + u" " + std::u16string(Z(text)));
  }

  static uint32_t ItemAddRef(void* self) { return static_cast<uint32_t>(++static_cast<Item*>(self)->references); }
  static uint32_t ItemRelease(void* self) {
    auto* item = static_cast<Item*>(self);
    --item->owner->itemsOutstanding;
    const int32_t left = --item->references;
    if (left == 0) delete item;
    return static_cast<uint32_t>(left);
  }
  static void ItemPassport(void* self, TQMActionPassport* passport) {
    auto* item = static_cast<Item*>(self);
    std::memset(passport, 0, sizeof *passport);
    passport->info.ActionType = item->owner->stepTypes[static_cast<size_t>(item->step)];
    ++item->owner->passportReads;
  }

  static const std::array<void*, 24>& Table() {
    static const std::array<void*, 24> table = [] {
      std::array<void*, 24> t;
      t.fill(reinterpret_cast<void*>(&Unexpected));
      t[0] = reinterpret_cast<void*>(&QueryInterface);
      t[1] = reinterpret_cast<void*>(&AddRef);
      t[2] = reinterpret_cast<void*>(&Release);
      t[7] = reinterpret_cast<void*>(&TaskId);
      t[14] = reinterpret_cast<void*>(&StepCount);
      t[15] = reinterpret_cast<void*>(&GetStep);
      t[19] = reinterpret_cast<void*>(&SetNextStep);
      t[20] = reinterpret_cast<void*>(&GetPrivateVariable);
      t[21] = reinterpret_cast<void*>(&SetPrivateVariable);
      t[23] = reinterpret_cast<void*>(&Log);
      return t;
    }();
    return table;
  }
  static const std::array<void*, 11>& ItemTable() {
    static const std::array<void*, 11> table = [] {
      std::array<void*, 11> t;
      t.fill(reinterpret_cast<void*>(&Unexpected));
      t[1] = reinterpret_cast<void*>(&ItemAddRef);
      t[2] = reinterpret_cast<void*>(&ItemRelease);
      t[10] = reinterpret_cast<void*>(&ItemPassport);
      return t;
    }();
    return table;
  }
};

void FakeTaskMethods::GetStep(void* self, void** out, int32_t index) {
  FakeTask& task = Of(self);
  if (index < 0 || index >= static_cast<int32_t>(task.stepTypes.size())) {
    *out = nullptr;
    return;
  }
  ++task.itemsOutstanding;
  *out = new Item{ItemTable().data(), &task, index, 1};
}

TestHost& Host() {
  static TestHost host;
  return host;
}

const TAFActionsInfo& Actions() { return *Initialised().ActionsInfo; }

FakeTask::FakeTask(std::vector<int32_t> types, int32_t id)
    : stepTypes(std::move(types)), taskId(id), com_{FakeTaskMethods::Table().data(), this} {
  Initialised();
}

// A table the test attached goes with the task, as at a job stop.
FakeTask::~FakeTask() { FreeJobTable(Bridge()); }

QmTaskBridge FakeTask::Bridge() { return QmTaskBridge::Cast(Interface()); }

TAFActionParams FakeTask::Params(std::u16string& text, int32_t step) const {
  TAFActionParams params{};
  params.Size = static_cast<int32_t>((text.size() + 1) * sizeof(char16_t));
  params.PPtr = text.data();
  params.TaskID = static_cast<uint32_t>(taskId);
  params.StepNum = step;
  return params;
}

bool FakeTask::Exec(int32_t index, int32_t step, std::u16string_view block) {
  std::u16string text(block);
  TAFActionParams params = Params(text, step);
  return Actions().ExecAction(index, Interface(), &params) != 0;
}

void FakeTask::JobStop(int32_t index, int32_t step, std::u16string_view block) {
  std::u16string text(block);
  TAFActionParams params = Params(text, step);
  Actions().JobStop(index, Interface(), &params);
}

}  // namespace qm::test
