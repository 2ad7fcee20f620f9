// qmhost: plays Quillmate for the plug-in. Loads the library through
// InitQMPlugin, lists its catalogue, shows its about box, and runs task files,
// printing a transcript of everything the plug-in does through the host.
#include <cstdio>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "core/utf.h"
#include "host.h"
#include "host_memory.h"
#include "plugin_library.h"
#include "task_check.h"
#include "task_file.h"
#include "task_runner.h"
#include "transcript.h"

using namespace qmhost;

namespace {

constexpr int kExitOk = 0;
constexpr int kExitTaskFailed = 1;
constexpr int kExitUsage = 2;
constexpr int kExitMemory = 3;
constexpr int kExitCancelled = 4;
constexpr int kExitDeclined = 5;

const char kUsage[] =
    "usage: qmhost [options] list | about | run TASKFILE | configure ACTION_ID [BLOCKFILE]\n"
    "options:\n"
    "  --plugin PATH         the plug-in library (default: next to qmhost)\n"
    "  --host-version TEXT   the version the host claims (default 9.5.0.1)\n"
    "  --var NAME=VALUE      a host variable before the task starts (repeatable)\n"
    "  --task-id N           the task's identifier (default 1)\n"
    "  --max-steps N         stop a task after N steps (default 100000000)\n"
    "  --quiet               print only the outcome\n"
    "  --trace-expand        print every variable expansion the plug-in asks for\n"
    "  --refuse-bridge       the task interface refuses the plug-in's cast\n";

std::string Narrow(std::u16string_view text) { return qm::Utf16ToUtf8(text); }

// The image through the host's size protocol: ask with no room, then with
// the size the plug-in asked for.
std::string ImageText(TGetActionTriggerLogo actionImage, TGetPluginLogo pluginImage, int32_t index) {
  uint32_t size = 0;
  const bool first = actionImage ? actionImage(index, nullptr, &size) : pluginImage(nullptr, &size);
  if (first) return size == 0 ? "none" : "protocol error (" + std::to_string(size) + " bytes with no room)";
  std::vector<unsigned char> buffer(size);
  uint32_t room = size;
  const bool second = actionImage ? actionImage(index, buffer.data(), &room) : pluginImage(buffer.data(), &room);
  if (!second || room != size) return "protocol error";
  const bool png = size >= 8 && std::memcmp(buffer.data(), "\x89PNG\r\n\x1a\n", 8) == 0;
  return std::string(png ? "png " : "bytes ") + std::to_string(size);
}

void List(const TAFPluginInfo& info) {
  Print("plug-in " + Quote(Z(info.Descr)) + ", id " + std::to_string(info.ID) + ", icon " +
        (info.Icon ? "set" : "none") + ", about " + (info.About ? "yes" : "no") + ", settings " +
        (info.PluginConfig ? "yes" : "no") + ", shutdown " + (info.ShutdownPlugin ? "yes" : "no") + ", image " +
        (info.GetPluginImage ? ImageText(nullptr, info.GetPluginImage, 0) : "no collection"));
  if (!info.IsActions || !info.ActionsInfo) {
    Print("actions: none");
  } else {
    const TAFActionsInfo& actions = *info.ActionsInfo;
    Print("actions: " + std::to_string(actions.ActionsCount));
    for (int32_t i = 0; i < actions.ActionsCount; ++i) {
      const TAFActionInfo& a = *actions.GetActionInfo(i);
      char16_t descr[260];
      std::fill(std::begin(descr), std::end(descr), u'#');
      TAFActionParams params{};
      actions.ActionDescr(i, &params, descr);
      Print("  " + std::to_string(i) + " " + Narrow(Z(a.ActionID)) + " " + Quote(Z(a.Name)) + " type " +
            std::to_string(a.ActionType) + " indent " + std::to_string(a.Indent) + " service " +
            (a.AllowNTService == kLongTrue ? "yes" : (a.AllowNTService ? "nonstandard" : "no")) + " script " +
            Quote(Z(a.ScriptFunctionName)) + " icon " + (a.Icon ? "set" : "none") + " image " +
            ImageText(actions.GetActionImage, nullptr, i) + " descr " + Quote(Z(descr)));
    }
  }
  Print(std::string("events: ") + (info.IsEvents && info.EventsInfo ? std::to_string(info.EventsInfo->EventsCount)
                                                                     : "none"));
}

// A block file's UTF-8 lines as a step's block: each line a key, ending in CR LF.
bool ReadBlockFile(const std::string& path, std::u16string& block) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  size_t start = 0;
  while (start < bytes.size()) {
    size_t end = bytes.find('\n', start);
    if (end == std::string::npos) end = bytes.size();
    std::string line = bytes.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty()) block += qm::Utf8ToUtf16(line) + u"\r\n";
    start = end + 1;
  }
  return true;
}

// Opens the editor of the action `actionId` on `block` through the catalogue;
// prints the confirmed block one key a line, or "cancelled".
int Configure(const TAFPluginInfo& info, const std::string& actionId, const std::u16string& block) {
  const TAFActionsInfo* actions = info.IsActions ? info.ActionsInfo : nullptr;
  int32_t index = -1;
  for (int32_t i = 0; actions && i < actions->ActionsCount; ++i) {
    if (Narrow(Z(actions->GetActionInfo(i)->ActionID)) == actionId) index = i;
  }
  if (index < 0) {
    Print("qmhost: no action " + Quote(qm::Utf8ToUtf16(actionId)) + " in the catalogue");
    return kExitUsage;
  }
  // The step's block as the host keeps it: from the host's own allocator.
  const auto bytes = static_cast<int32_t>((block.size() + 1) * sizeof(char16_t));
  auto* memory = static_cast<char16_t*>(Memory().Allocate(bytes));
  std::copy(block.begin(), block.end(), memory);
  memory[block.size()] = u'\0';
  TAFActionParams params{bytes, memory, 0, 0, kLongFalse};
  const bool confirmed = actions->ConfigAction(index, &params) != kLongFalse;
  const std::u16string written = confirmed && params.PPtr ? std::u16string(params.PPtr) : std::u16string();
  if (params.PPtr) Memory().Free(params.PPtr, params.Size);
  if (!confirmed) {
    Print("cancelled");
    return kExitCancelled;
  }
  size_t start = 0;
  while (start < written.size()) {
    size_t end = written.find(u"\r\n", start);
    if (end == std::u16string::npos) end = written.size();
    Print(Narrow(std::u16string_view(written).substr(start, end - start)));
    start = end + 2;
  }
  return kExitOk;
}

// The task checked against the catalogue before its first step: false when
// it must not run. Every problem goes to stderr as FILE:LINE: message.
bool CheckedTask(const TAFPluginInfo& info, TaskFile& task) {
  std::vector<CatalogueEntry> catalogue;
  for (int32_t i = 0; info.IsActions && info.ActionsInfo && i < info.ActionsInfo->ActionsCount; ++i) {
    const TAFActionInfo& action = *info.ActionsInfo->GetActionInfo(i);
    catalogue.push_back({Narrow(Z(action.ActionID)), action.ActionType});
  }
  CheckTask(task, catalogue);
  for (const auto& line : task.Report()) PrintError(line);
  if (!task.HasErrors()) return true;
  PrintError("qmhost: " + task.path + ": the task was not run");
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  PrepareConsole();
  Host& host = Host::Instance();
  std::string pluginPath = DefaultPluginPath(argv[0]);
  int32_t taskId = 1;
  uint64_t maxSteps = 100000000;
  std::vector<std::string> args;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    auto value = [&]() -> std::string {
      if (i + 1 >= argc) {
        std::fputs(kUsage, stderr);
        std::exit(kExitUsage);
      }
      return argv[++i];
    };
    if (arg == "--plugin") {
      pluginPath = value();
    } else if (arg == "--host-version") {
      host.options.version = qm::Utf8ToUtf16(value());
    } else if (arg == "--var") {
      const std::string v = value();
      const size_t eq = v.find('=');
      host.variables[qm::Utf8ToUtf16(v.substr(0, eq))] = eq == std::string::npos ? u"" : qm::Utf8ToUtf16(v.substr(eq + 1));
    } else if (arg == "--task-id") {
      taskId = std::stoi(value());
    } else if (arg == "--max-steps") {
      maxSteps = std::stoull(value());
    } else if (arg == "--quiet") {
      host.options.quiet = true;
    } else if (arg == "--trace-expand") {
      host.options.traceExpand = true;
    } else if (arg == "--refuse-bridge") {
      host.options.refuseBridge = true;
    } else if (arg.rfind("--", 0) == 0) {
      std::fputs(kUsage, stderr);
      return kExitUsage;
    } else {
      args.push_back(arg);
    }
  }
  const bool configure = !args.empty() && args[0] == "configure";
  if (args.empty() || (args[0] == "run" && args.size() != 2) || (configure && (args.size() < 2 || args.size() > 3)) ||
      (args[0] != "run" && !configure && args.size() != 1) ||
      (args[0] != "run" && !configure && args[0] != "list" && args[0] != "about")) {
    std::fputs(kUsage, stderr);
    return kExitUsage;
  }
#ifndef _WIN32
  if (configure) {
    Print("qmhost: configure needs the Windows build: the dialogs are Windows windows");
    return kExitUsage;
  }
#endif
  std::u16string block;
  if (configure && args.size() == 3 && !ReadBlockFile(args[2], block)) {
    Print("qmhost: cannot read " + args[2]);
    return kExitUsage;
  }

  TaskFile task;
  if (args[0] == "run") {
    if (!ReadTaskFile(args[1], task)) {
      for (const auto& line : task.Report()) PrintError(line);
      return kExitUsage;
    }
    host.variables[u"taskdir"] = FolderOf(args[1]);
  }

  int exitCode = kExitOk;
  {
    PluginLibrary library;
    std::string error;
    if (!library.Load(pluginPath, error)) {
      Print("qmhost: cannot load " + pluginPath + ": " + error);
      return kExitUsage;
    }
    TAFAppInfo app = host.MakeAppInfo();
    TAFPluginInfo* info = nullptr;
    try {
      info = library.Entry()(&app);
    } catch (const std::exception& e) {
      Print("qmhost: InitQMPlugin raised " + Quote(qm::Utf8ToUtf16(e.what())));
      return kExitTaskFailed;
    }
    if (!info) {
      Print("qmhost: the plug-in declined to load (host version " + Narrow(host.options.version) + ")");
      exitCode = kExitDeclined;
    } else if (args[0] == "list") {
      List(*info);
    } else if (configure) {
      exitCode = Configure(*info, args[1], block);
    } else if (args[0] == "about") {
      if (info->About) {
        info->About();
      } else {
        Print("about: none");
      }
    } else {
      if (!CheckedTask(*info, task)) return kExitUsage;
      TaskRunner runner(*info, task, taskId);
      const RunResult result = runner.Run(maxSteps);
      if (result.ok) {
        Print("task finished");
      } else {
        Print(result.failure);
        exitCode = kExitTaskFailed;
      }
    }
  }  // the library unloads here and must give back every block it holds

  const auto problems = Memory().Problems();
  for (const auto& problem : problems) Print("memory: " + problem);
  if (OutstandingStepItems() != 0) Print("step items never released: " + std::to_string(OutstandingStepItems()));
  if (!problems.empty() || OutstandingStepItems() != 0) return kExitMemory;
  return exitCode;
}
