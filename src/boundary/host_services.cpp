#include "boundary/host_services.h"

#include <stdexcept>
#include <vector>

#include "core/convert.h"
#include "core/terminated_text.h"
#include "boundary/task_bridge.h"
#include "platform/host_window.h"

namespace qm {

namespace {

constexpr int32_t kExpandBufferBytes = 65535;
constexpr int32_t kSelectBufferChars = 2048;

std::u16string Z(std::u16string_view text) { return std::u16string(text); }

// The host's record and the plug-in's identity, copied once at entry and only
// read afterwards.
struct HostState {
  bool set = false;
  TAFAppInfo app{};
  int32_t pluginId = 0;
};
HostState g_host;

}  // namespace

void SetHostApp(const TAFAppInfo& app, int32_t pluginId) {
  g_host.app = app;
  g_host.pluginId = pluginId;
  g_host.set = true;
}

void ClearHostApp() { g_host = HostState{}; }

const TAFAppInfo& HostApp() {
  if (!g_host.set) throw std::logic_error("the plug-in is not initialised");
  return g_host.app;
}

void LogText(int32_t infoType, std::u16string_view text, const QmTaskBridge* task) {
  if (task && *task) {
    task->Log(infoType, text);
  } else if (HostApp().InfoOut) {
    HostApp().InfoOut(infoType, Z(text).c_str());
  }
}

void ReportError(uint32_t taskId, uint32_t code, std::u16string_view text) {
  const TAFAppInfo& app = HostApp();
  if (app.SetLastError) app.SetLastError(static_cast<int32_t>(taskId), code, Z(text).c_str());
  ForEachNonEmptyLine(text, [](std::u16string_view line) { LogText(itError, line); });
}

void LogWarningLines(std::u16string_view text) {
  ForEachNonEmptyLine(text, [](std::u16string_view line) { LogText(itWarning, line); });
}

std::u16string ExpandVariables(std::u16string_view text) {
  if (!Contains(text, u'{')) return std::u16string(text);
  const TAFAppInfo& app = HostApp();
  const std::u16string source = Z(text);
  void* block = nullptr;
  int32_t size = kExpandBufferBytes;
  app.QMGetMemory(&block, size);
  int32_t bufSize = size;
  LongBool error = kLongFalse;
  app.ExpandText(source.c_str(), static_cast<char16_t*>(block), &bufSize, &error);
  if (error) {
    // One retry with the size the host asked for; a second refusal is not acted on.
    app.QMFreeMemory(&block, size);
    size = bufSize;
    block = nullptr;
    app.QMGetMemory(&block, size);
    error = kLongFalse;
    app.ExpandText(source.c_str(), static_cast<char16_t*>(block), &bufSize, &error);
  }
  auto* chars = static_cast<char16_t*>(block);
  std::u16string result;
  const size_t limit = static_cast<size_t>(size) / 2;
  for (size_t i = 0; i < limit && chars[i] != 0; ++i) result.push_back(chars[i]);
  app.QMFreeMemory(&block, size);
  return result;
}

std::u16string SelectVariable() {
  std::vector<char16_t> buffer(kSelectBufferChars, 0);
  HostApp().SelectVar(buffer.data(), kSelectBufferChars / 2);
  buffer.back() = 0;
  return std::u16string(buffer.data());
}

void SetVariable(std::u16string_view name, std::u16string_view value, bool expandName) {
  // Names and values are usually short: copied without the heap.
  if (expandName) {
    const std::u16string target = ExpandVariables(name);
    HostApp().SetUserVar(target.c_str(), TerminatedText(value).c_str());
  } else {
    HostApp().SetUserVar(TerminatedText(name).c_str(), TerminatedText(value).c_str());
  }
}

void SetVariableTerminated(std::u16string_view name, const std::u16string& value) {
  HostApp().SetUserVar(TerminatedText(name).c_str(), value.c_str());
}

void ShowAbout(void* icon, std::u16string_view title, std::u16string_view addon) {
  HostApp().PluginAbout(icon, Z(title).c_str(), Z(addon).c_str(), g_host.pluginId);
}

int32_t DefaultScale() {
  if (!g_host.set) return 100;
  intptr_t scale = 0;
  if (!QueryHostWindow(g_host.app.WHandle, kQmMsgHostSetting, kQmSettingScale, scale)) return 100;
  return scale >= 100 && scale <= 250 ? static_cast<int32_t>(scale) : 100;
}

}  // namespace qm
