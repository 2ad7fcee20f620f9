#include "fake_host.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "core/convert.h"
#include "plugin/af_plugin.h"
#include "plugin/host_abi.h"
#include "table/job_table.h"

namespace qm::testing {

namespace {

HostRecord g_record;

std::u16string_view Z(const char16_t* text) {
  if (!text) return {};
  size_t n = 0;
  while (text[n]) ++n;
  return {text, n};
}

std::u16string Line(int32_t level, std::u16string_view text) {
  return IntToStr(level) + u" " + std::u16string(text);
}

void GetMemory(void** p, int32_t size) { *p = std::calloc(static_cast<size_t>(size), 1); }
void FreeMemory(void** p, int32_t) {
  std::free(*p);
  *p = nullptr;
}
void InfoOut(int32_t level, const char16_t* text) { g_record.generalLog.push_back(Line(level, Z(text))); }
void SetUserVar(const char16_t* name, const char16_t* value) { g_record.variables[std::u16string(Z(name))] = Z(value); }
void SetLastError(int32_t, uint32_t code, const char16_t* text) {
  g_record.lastErrorCode = code;
  g_record.lastErrorText = Z(text);
  ++g_record.errorReports;
}

// Replaces {name} with the variable's value; an unknown name stays as it is.
void ExpandText(const char16_t* source, char16_t* buffer, int32_t* bufSize, LongBool* error) {
  const std::u16string_view text = Z(source);
  std::u16string out;
  for (size_t i = 0; i < text.size(); ++i) {
    const size_t close = text[i] == u'{' ? text.find(u'}', i) : std::u16string_view::npos;
    const auto found = close == std::u16string_view::npos
                           ? g_record.variables.end()
                           : g_record.variables.find(std::u16string(text.substr(i + 1, close - i - 1)));
    if (found == g_record.variables.end()) {
      out.push_back(text[i]);
    } else {
      out += found->second;
      i = close;
    }
  }
  const auto need = static_cast<int32_t>((out.size() + 1) * sizeof(char16_t));
  if (need > *bufSize) {
    *bufSize = need;
    *error = kLongTrue;
    return;
  }
  std::memcpy(buffer, out.c_str(), static_cast<size_t>(need));
  *error = kLongFalse;
}

TAFPlugin& Plugin() {
  static TAFPlugin plugin;
  static const bool initialised = [] {
    TAFAppInfo app{};
    app.Ver = u"9.5";
    app.InfoOut = &InfoOut;
    app.QMGetMemory = &GetMemory;
    app.QMFreeMemory = &FreeMemory;
    app.ExpandText = &ExpandText;
    app.SetUserVar = &SetUserVar;
    app.SetLastError = &SetLastError;
    plugin.Initialize(app);
    return true;
  }();
  (void)initialised;
  return plugin;
}

}  // namespace

HostRecord& Host() {
  Plugin();
  return g_record;
}

void ResetHost() { Host() = HostRecord{}; }

// The task interface: a method table whose entries the plug-in calls by
// position, then the task's own state.
struct FakeTask::Object {
  void* const* table;
  int32_t references = 1;
  std::map<std::u16string, std::u16string> privateVariables;

  static int32_t QueryInterface(void* self, const void*, void** out) {
    ++static_cast<Object*>(self)->references;
    *out = self;
    return 0;
  }
  static uint32_t AddRef(void* self) { return static_cast<uint32_t>(++static_cast<Object*>(self)->references); }
  static uint32_t Release(void* self) { return static_cast<uint32_t>(--static_cast<Object*>(self)->references); }
  static int32_t TaskId(void*) { return 1; }
  static void GetPrivate(void* self, char16_t** value, const char16_t* name) {
    auto& vars = static_cast<Object*>(self)->privateVariables;
    const auto found = vars.find(std::u16string(Z(name)));
    if (found == vars.end()) {
      *value = nullptr;
      return;
    }
    void* block = nullptr;
    GetMemory(&block, static_cast<int32_t>((found->second.size() + 1) * sizeof(char16_t)));
    std::memcpy(block, found->second.c_str(), found->second.size() * sizeof(char16_t));
    *value = static_cast<char16_t*>(block);
  }
  static void SetPrivate(void* self, const char16_t* name, const char16_t* value) {
    static_cast<Object*>(self)->privateVariables[std::u16string(Z(name))] = Z(value);
  }
  static void Log(void*, uint8_t level, const char16_t* text) { g_record.taskLog.push_back(Line(level, Z(text))); }

  static const std::array<void*, 24>& Table() {
    static const std::array<void*, 24> table = [] {
      std::array<void*, 24> t{};
      t[0] = reinterpret_cast<void*>(&QueryInterface);
      t[1] = reinterpret_cast<void*>(&AddRef);
      t[2] = reinterpret_cast<void*>(&Release);
      t[7] = reinterpret_cast<void*>(&TaskId);
      t[20] = reinterpret_cast<void*>(&GetPrivate);
      t[21] = reinterpret_cast<void*>(&SetPrivate);
      t[23] = reinterpret_cast<void*>(&Log);
      return t;
    }();
    return table;
  }
};

FakeTask::FakeTask() : object_(new Object{Object::Table().data(), 1, {}}) {
  Plugin();
  bridge_ = QmTaskBridge::Cast(object_);
}

FakeTask::~FakeTask() {
  FreeJobTable(bridge_);
  bridge_ = QmTaskBridge();
  delete object_;
}

}  // namespace qm::testing
