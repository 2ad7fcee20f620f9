// The thin wrappers through which the rest of the plug-in reaches the host:
// log lines, error reports, variable expansion and variables, the about box.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "abi/host_abi.h"

namespace qm {

class QmTaskBridge;

// Keeps a copy of the host record and the plug-in's identity (at entry), and
// forgets them (when the plug-in unloads).
void SetHostApp(const TAFAppInfo& app, int32_t pluginId);
void ClearHostApp();
// The plug-in's copy of the host record; raises before SetHostApp.
const TAFAppInfo& HostApp();

// One line to the task's log when a task is at hand, else to the general log.
void LogText(int32_t infoType, std::u16string_view text, const QmTaskBridge* task = nullptr);
// Sets the task's last error (when the host offers that), then writes each
// non-empty line of the text to the general log at the error level.
void ReportError(uint32_t taskId, uint32_t code, std::u16string_view text);
// Each non-empty line to the general log at the warning level.
void LogWarningLines(std::u16string_view text);
// Each non-empty line of a text, in order (lines end at CR LF, CR or LF).
template <typename Fn>
void ForEachNonEmptyLine(std::u16string_view text, Fn&& fn);

// Expands {variable} references through the host; text without "{" is
// returned as it is without asking the host.
std::u16string ExpandVariables(std::u16string_view text);
// The host's variable picker; empty when the user cancelled.
std::u16string SelectVariable();
// Sets a host variable; the name is expanded first only when asked to.
void SetVariable(std::u16string_view name, std::u16string_view value, bool expandName = false);
// The same for a value that is already zero-terminated, handed over without a copy.
void SetVariableTerminated(std::u16string_view name, const std::u16string& value);
void ShowAbout(void* icon, std::u16string_view title, std::u16string_view addon);
// The host window's scale in percent, 100 to 250; 100 when it does not say.
int32_t DefaultScale();

template <typename Fn>
void ForEachNonEmptyLine(std::u16string_view text, Fn&& fn) {
  size_t start = 0;
  for (size_t i = 0; i <= text.size(); ++i) {
    if (i == text.size() || text[i] == u'\r' || text[i] == u'\n') {
      if (i > start) fn(text.substr(start, i - start));
      start = i + 1;
    }
  }
}

}  // namespace qm
