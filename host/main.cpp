// qmhost: plays Quillmate for the plug-in. Loads the library through
// InitQMPlugin, lists its catalogue, shows its about box, and runs task files,
// printing a transcript of everything the plug-in does through the host.
#include <cstdio>
#include <cstring>
#include <exception>
#include <iterator>
#include <new>
#include <string>
#include <vector>

#include "action_keys.h"
#include "command_line.h"
#include "console.h"
#include "file_bytes.h"
#include "core/utf.h"
#include "host.h"
#include "host_memory.h"
#include "inspect.h"
#include "plugin_library.h"
#include "task_check.h"
#include "task_file.h"
#include "task_runner.h"
#include "transcript.h"
#include "utf8_text.h"

using namespace qmhost;

namespace {

constexpr int kExitOk = 0;
constexpr int kExitTaskFailed = 1;
constexpr int kExitUsage = 2;
constexpr int kExitMemory = 3;
constexpr int kExitCancelled = 4;
constexpr int kExitDeclined = 5;
constexpr int kExitTranscript = 6;

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
  Print(std::string("events: ") +
        (info.IsEvents && info.EventsInfo ? std::to_string(info.EventsInfo->EventsCount) : "none"));
}

// A block file's UTF-8 lines as a step's block: each line a key, ending in CR LF.
bool ReadBlockFile(const std::string& path, std::u16string& block, std::string& reason) {
  std::string bytes;
  if (!ReadFileBytes(path, bytes, reason)) return false;
  const size_t bad = FirstInvalidUtf8(bytes);
  if (bad != std::string::npos) {
    reason = "not UTF-8 text (byte " + HexByte(static_cast<unsigned char>(bytes[bad])) + " at offset " +
             std::to_string(bad) + ")";
    return false;
  }
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

// The first command-line word that is not UTF-8 text, named with the byte
// at fault; empty when all are.
std::string BadArgument(const std::vector<std::string>& words) {
  for (size_t i = 1; i < words.size(); ++i) {
    const size_t bad = FirstInvalidUtf8(words[i]);
    if (bad == std::string::npos) continue;
    return "argument " + std::to_string(i) + " " + QuoteBytes(words[i]) + " is not UTF-8 text (byte " +
           HexByte(static_cast<unsigned char>(words[i][bad])) + " at offset " + std::to_string(bad) + ")";
  }
  return {};
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
    PrintError("qmhost: no action " + Quote(qm::Utf8ToUtf16(actionId)) + " in the catalogue");
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
bool CheckedTask(const TAFPluginInfo& info, TaskFile& task, bool lenient) {
  std::vector<CatalogueEntry> catalogue;
  for (int32_t i = 0; info.IsActions && info.ActionsInfo && i < info.ActionsInfo->ActionsCount; ++i) {
    const TAFActionInfo& action = *info.ActionsInfo->GetActionInfo(i);
    catalogue.push_back({Narrow(Z(action.ActionID)), action.ActionType});
  }
  CheckTask(task, catalogue, lenient);
  for (const auto& line : task.Report()) PrintError(line);
  if (!task.HasErrors()) return true;
  PrintError("qmhost: " + task.path + ": the task was not run");
  return false;
}

// `keys`: the actions and built-ins; `keys ID`: every key that one reads.
int PrintKeys(const std::string& id) {
  auto padded = [](std::string text, size_t width) {
    if (text.size() < width) text.resize(width, ' ');
    return text + " ";
  };
  if (id.empty()) {
    for (const auto& action : AllActionKeys()) Print(padded(action.id, 18) + action.summary);
    return kExitOk;
  }
  const ActionKeys* action = FindActionKeys(id);
  if (!action) {
    std::vector<std::string> ids;
    for (const auto& a : AllActionKeys()) ids.push_back(a.id);
    const std::string nearest = Nearest(id, ids);
    PrintError("qmhost: no action " + id + (nearest.empty() ? "" : "; did you mean " + nearest + "?"));
    return kExitUsage;
  }
  Print(action->id + ": " + action->summary);
  if (action->keys.empty()) Print("  (no keys)");
  for (const StepKey* key : action->keys) {
    const std::string fallback = key->fallback8.empty() ? "(empty)" : std::string(key->fallback8);
    Print("  " + padded(KeyPattern(*key), 22) + padded(std::string(TypeName(*key)), 7) + padded(fallback, 9) +
          std::string(key->meaning));
  }
  return kExitOk;
}

int Main(int argc, char** argv) {
  PrepareConsole();
  const std::vector<std::string> words = Utf8Arguments(argc, argv);
  if (const std::string bad = BadArgument(words); !bad.empty()) {
    PrintError("qmhost: " + bad);
    return kExitUsage;
  }
  CommandLine line;
  std::string lineError;
  if (!ParseCommandLine(std::vector<std::string>(words.begin() + 1, words.end()), line, lineError)) {
    PrintError("qmhost: " + lineError + " (qmhost --help lists the commands and options)");
    return kExitUsage;
  }
  if (line.help || line.version) {
    const std::string usage = line.command.empty() ? kUsage : CommandHelp(line.command);
    Print(line.help ? usage.substr(0, usage.size() - 1) : std::string("qmhost ") + QMHOST_VERSION);
    return TranscriptWritten() ? kExitOk : kExitTranscript;
  }
  if (line.command == "inspect") {
    const int code = Inspect(line.args.front());
    return TranscriptWritten() || code != kExitOk ? code : kExitTranscript;
  }
  if (line.command == "keys") {
    const int code = PrintKeys(line.args.empty() ? std::string() : line.args.front());
    return TranscriptWritten() || code != kExitOk ? code : kExitTranscript;
  }
  Host& host = Host::Instance();
  const std::string pluginPath = line.pluginPath.empty() ? DefaultPluginPath(words.front().c_str()) : line.pluginPath;
  if (!line.hostVersion.empty()) host.options.version = qm::Utf8ToUtf16(line.hostVersion);
  for (const auto& [name, value] : line.variables) host.variables[qm::Utf8ToUtf16(name)] = qm::Utf8ToUtf16(value);
  host.options.quiet = line.quiet;
  host.options.traceExpand = line.traceExpand;
  host.options.time = line.time;
  host.options.refuseBridge = line.refuseBridge;
  const bool configure = line.command == "configure";
  std::vector<std::string> args = line.args;
  args.insert(args.begin(), line.command);
  std::u16string block;
  std::string reason;
  if (configure && args.size() == 3 && !ReadBlockFile(args[2], block, reason)) {
    PrintError("qmhost: " + args[2] + ": cannot read the block file: " + reason);
    return kExitUsage;
  }
#ifndef _WIN32
  if (configure) {
    PrintError("qmhost: configure needs the Windows build: the dialogs are Windows windows");
    return kExitUsage;
  }
#endif

  TaskFile task;
  if (args[0] == "run") {
    if (!ReadTaskFile(args[1], task)) {
      for (const auto& line : task.Report()) PrintError(line);
      return kExitUsage;
    }
    host.variables[u"taskdir"] = FolderOf(args[1] == "-" ? "./-" : args[1]);
  }

  int exitCode = kExitOk;
  {
    PluginLibrary library;
    std::string error = FileProblem(pluginPath);
    if (!error.empty() || !library.Load(pluginPath, error)) {
      PrintError("qmhost: cannot load " + pluginPath + ": " + error);
      return kExitUsage;
    }
    TAFAppInfo app = host.MakeAppInfo();
    TAFPluginInfo* info = nullptr;
    try {
      info = library.Entry()(&app);
    } catch (const std::exception& e) {
      PrintError("qmhost: InitQMPlugin raised " + Quote(qm::Utf8ToUtf16(e.what())));
      return kExitTaskFailed;
    }
    if (!info) {
      PrintError("qmhost: the plug-in declined to load (host version " + Narrow(host.options.version) + ")");
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
      if (!CheckedTask(*info, task, line.lenient)) return kExitUsage;
      TaskRunner runner(*info, task, line.taskId);
      runner.lenientValues = line.lenient;
      runner.showProgress = line.progress || StderrIsTerminal();
      const RunResult result = runner.Run(line.maxSteps);
      // A quiet transcript is the task's own output: the outcome goes beside it.
      const std::string outcome = result.ok ? "task finished" : result.failure;
      if (line.quiet) {
        PrintError(outcome);
      } else {
        Print(outcome);
      }
      if (!result.ok) exitCode = result.refused ? kExitUsage : kExitTaskFailed;
    }
  }  // the library unloads here and must give back every block it holds

  const auto problems = Memory().Problems();
  for (const auto& problem : problems) Print("memory: " + problem);
  if (OutstandingStepItems() != 0) Print("step items never released: " + std::to_string(OutstandingStepItems()));
  if (!problems.empty() || OutstandingStepItems() != 0) return kExitMemory;
  if (!TranscriptWritten()) {
    PrintError("qmhost: the transcript could not be written to standard output");
    return kExitTranscript;
  }
  return exitCode;
}

}  // namespace

int main(int argc, char** argv) {
  // Whatever goes wrong in qmhost itself ends as one line, never as an
  // exception the runtime reports with an abort.
  try {
    return Main(argc, argv);
  } catch (const std::bad_alloc&) {
    PrintError("qmhost: out of memory");
  } catch (const std::exception& e) {
    PrintError(std::string("qmhost: unexpected error: ") + e.what());
  } catch (...) {
    PrintError("qmhost: unexpected error");
  }
  return kExitUsage;
}
