#include "task_runner.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>

#include "console.h"
#include "action_keys.h"
#include "core/step_keys.h"
#include "core/utf.h"
#include "file_bytes.h"
#include "host.h"
#include "progress.h"
#include "table_view.h"
#include "task_check.h"
#include "transcript.h"

namespace qmhost {

namespace {

// Built-in step names and their types.
int32_t BuiltinType(const std::string& name) { return name == "end-loop" ? atEndLoop : atSimple; }

bool IsBuiltin(const std::string& name) {
  const ActionKeys* keys = FindActionKeys(name);
  return keys && keys->builtin;
}

// The prefix of the host variables the show-table step has the plug-in
// write the table's size and cells into; they are gone when the step ends.
constexpr char16_t kTableVariable[] = u"$$qmhost table$$";
// The most columns show-table prints; the rest are counted.
constexpr size_t kShownColumns = 50;

// a + b for decimal numbers written with "." or "," before the fraction
// (bank exports write 1.234,56 or 1234,56): exact, in the larger number of
// fraction digits, with the mark of the last operand that has one.
bool AddDecimal(const std::string& a, const std::string& b, std::string& sum) {
  struct Parsed {
    long long units = 0;
    int digits = 0;
    char mark = 0;
  };
  auto parse = [](std::string text, Parsed& out) {
    const size_t last = text.find_last_of(".,");
    if (last != std::string::npos) {
      out.mark = text[last];
      out.digits = static_cast<int>(text.size() - last - 1);
      text.erase(last, 1);
    }
    // Thousands separators: the other mark.
    text.erase(std::remove(text.begin(), text.end(), out.mark == ',' ? '.' : ','), text.end());
    const bool negative = !text.empty() && text[0] == '-';
    if (negative) text.erase(0, 1);
    if (text.empty() || text.size() > 17 || text.find_first_not_of("0123456789") != std::string::npos) return false;
    out.units = std::stoll(text) * (negative ? -1 : 1);
    return out.digits <= 6;
  };
  Parsed x, y;
  if (!parse(a, x) || !parse(b, y)) return false;
  const int digits = std::max(x.digits, y.digits);
  auto scaled = [&](const Parsed& p) {
    long long v = p.units;
    for (int i = p.digits; i < digits; ++i) v *= 10;
    return v;
  };
  const long long total = scaled(x) + scaled(y);
  std::string text = std::to_string(total < 0 ? -total : total);
  if (digits > 0) {
    if (text.size() <= static_cast<size_t>(digits)) text.insert(0, static_cast<size_t>(digits) + 1 - text.size(), '0');
    text.insert(text.size() - static_cast<size_t>(digits), 1, y.mark ? y.mark : x.mark);
  }
  sum = (total < 0 ? "-" : "") + text;
  return true;
}

// A count the plug-in wrote in decimal; anything else counts as 0.
size_t Count(const std::u16string& text) {
  size_t value = 0;
  for (const char16_t c : text) {
    if (c < u'0' || c > u'9' || value > SIZE_MAX / 20) return 0;
    value = value * 10 + static_cast<size_t>(c - u'0');
  }
  return value;
}

}  // namespace

TaskRunner::TaskRunner(const TAFPluginInfo& plugin, const TaskFile& file, int32_t taskId)
    : plugin_(plugin), file_(file), steps_(file.steps), taskId_(taskId) {
  for (const auto& step : steps_) {
    blocks_.push_back(step.Block());
    actionIndex_.push_back(ActionIndex(step.action));
  }
  commentsShown_.assign(steps_.size(), false);
  runs_.assign(steps_.size(), 0);
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
    // The task's own output: --quiet keeps it, as the text itself, for a pipe.
    const std::u16string text = host.Expand(step.Value(builtin::kPrintText.name));
    Print(host.options.quiet ? qm::Utf16ToUtf8(text) : "  " + Quote(text));
  } else if (step.action == "add-number") {
    const std::u16string name = host.Expand(step.Value(builtin::kAddNumberName.name));
    const auto current = host.variables.find(name);
    std::string sum;
    if (!AddDecimal(current == host.variables.end() ? "0" : qm::Utf16ToUtf8(current->second),
                    qm::Utf16ToUtf8(host.Expand(step.Value(builtin::kAddNumberValue.name))), sum)) {
      failure = "add-number: not a number: " + qm::Utf16ToUtf8(host.Expand(step.Value(builtin::kAddNumberValue.name)));
      return false;
    }
    host.variables[name] = qm::Utf8ToUtf16(sum);
    host.Event("  set " + Quote(name) + " = " + Quote(qm::Utf8ToUtf16(sum)));
  } else if (step.action == "show-table") {
    return ShowTable(i, failure);
  } else if (step.action == "set-variable") {
    const std::u16string name = host.Expand(step.Value(builtin::kSetVariableName.name));
    const std::u16string value = host.Expand(step.Value(builtin::kSetVariableValue.name));
    if (name.empty()) {
      failure = "set-variable: no variable name (name=)";
      return false;
    }
    host.variables[name] = value;
    host.Event("  set " + Quote(name) + " = " + QuoteValue(value));
  } else if (step.action == "show-file") {
    const std::string path = qm::Utf16ToUtf8(host.Expand(step.Value(builtin::kShowFileName.name)));
    std::string content;
    std::string reason;
    if (!ReadFileBytes(path, content, reason)) {
      failure = "show-file: cannot read " + path + ": " + reason;
      return false;
    }
    host.Event("  file " + path + " (" + std::to_string(content.size()) + " bytes): " + QuoteBytes(content));
  }
  return true;
}

bool TaskRunner::RunMuted(qm::Action action, std::u16string block, int32_t step, std::string& error) {
  Host& host = Host::Instance();
  const std::string actionId(qm::kCatalogue[qm::CatalogueIndex(action)].id8);
  const int32_t index = ActionIndex(actionId);
  if (index < 0) {
    error = "the plug-in has no " + actionId;
    return false;
  }
  TAFActionParams params = ParamsFor(block, step);
  const bool quiet = host.options.quiet;
  host.options.quiet = true;
  host.lastErrorSet = false;
  bool ok = false;
  try {
    ok = plugin_.ActionsInfo->ExecAction(index, bridge_, &params) != 0;
  } catch (const std::exception& e) {
    host.lastErrorText = qm::Utf8ToUtf16(e.what());
    host.lastErrorSet = true;
  }
  host.options.quiet = quiet;
  if (!ok) error = host.lastErrorSet ? Quote(host.lastErrorText) : std::string("the plug-in refused");
  host.lastErrorSet = false;
  return ok;
}

bool TaskRunner::ShowTable(int32_t i, std::string& failure) {
  Host& host = Host::Instance();
  const std::u16string rows = steps_[static_cast<size_t>(i)].Value(builtin::kShowTableRows.name);
  size_t limit = 20;
  if (!rows.empty()) {
    const std::string text = qm::Utf16ToUtf8(host.Expand(rows));
    if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos || text.size() > 9) {
      failure = "rows must be a whole number, not " + text;
      return false;
    }
    limit = std::stoul(text);
  }
  // The table's size through Get Data Information, then only the cells shown
  // through Read Cells: both read the task's table as it stands ("Prev. CSV
  // action") and change neither its content nor its format, and what they
  // report on the way is not part of the task.
  auto take = [&](const std::u16string& name) {
    const auto found = host.variables.find(name);
    std::u16string value = found == host.variables.end() ? std::u16string() : found->second;
    if (found != host.variables.end()) host.variables.erase(found);
    return value;
  };
  namespace keys = qm::keys;
  auto keyLine = [](std::u16string_view key, std::u16string_view value) {
    return std::u16string(key) + u"=" + std::u16string(value) + u"\r\n";
  };
  const std::u16string table = kTableVariable;
  std::string error;
  if (!RunMuted(qm::Action::DataInformation,
                keyLine(keys::kSource.name, u"0") + keyLine(keys::kRecordCountVar.name, table + u"rows") +
                    keyLine(keys::kColCountVar.name, table + u"columns"),
                i, error)) {
    failure = "no table to show: " + error;
    return false;
  }
  const size_t records = Count(take(table + u"rows"));
  const size_t allColumns = Count(take(table + u"columns"));
  // No screen shows more columns than these; a table of thousands of columns
  // costs only the cells shown.
  const size_t columns = std::min(allColumns, kShownColumns);
  const size_t shown = std::min(limit, records);
  auto number = [](size_t n) { return qm::Utf8ToUtf16(std::to_string(n)); };
  std::u16string block = keyLine(keys::kSource.name, u"0") + keyLine(keys::kCellCount.name, number(shown * columns));
  for (size_t cell = 0; cell < shown * columns; ++cell) {
    const auto n = static_cast<int32_t>(cell);
    block += keyLine(keys::IndexedName(keys::kRow, n), number(cell / columns + 1)) +
             keyLine(keys::IndexedName(keys::kCol, n), number(cell % columns + 1)) +
             keyLine(keys::IndexedName(keys::kVal, n), table + number(cell));
  }
  const bool read = RunMuted(qm::Action::ReadCells, block, i, error);
  std::vector<std::vector<std::u16string>> cells(shown, std::vector<std::u16string>(columns));
  for (size_t cell = 0; cell < shown * columns; ++cell) {
    cells[cell / columns][cell % columns] = take(table + number(cell));
  }
  if (!read) {
    failure = "the table's cells could not be read: " + error;
    return false;
  }
  const bool quiet = host.options.quiet;
  for (const auto& line : TableView(cells, records - shown, allColumns - columns)) Print(quiet ? line : "  " + line);
  return true;
}

RunResult TaskRunner::Run(uint64_t maxSteps) {
  Host& host = Host::Instance();
  auto* bridge = new TaskInterface(*this);
  bridge_ = bridge;
  RunResult result;
  uint64_t executed = 0;
  using Clock = std::chrono::steady_clock;
  const auto started = Clock::now();
  Clock::duration inSteps{};  // the steps' own time, without the host's between them
  auto milliseconds = [](Clock::duration d) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3f ms", std::chrono::duration<double, std::milli>(d).count());
    return std::string(text);
  };
  std::unique_ptr<Progress> progress;
  if (showProgress) progress = std::make_unique<Progress>();
  for (int32_t i = 0; i >= 0 && i < StepCount();) {
    if (++executed > maxSteps) {
      result = {false, "more than " + std::to_string(maxSteps) + " steps run"};
      break;
    }
    const TaskStep& step = steps_[static_cast<size_t>(i)];
    const int32_t index = actionIndex_[static_cast<size_t>(i)];
    if (!host.options.quiet) {
      if (!commentsShown_[static_cast<size_t>(i)]) {
        for (const auto& comment : step.comments) Print(comment);
        commentsShown_[static_cast<size_t>(i)] = true;
      }
      host.Event("[" + std::to_string(i) + "] " + step.action);
    }
    // Values with {variables} are checked now, expanded, as the whole task
    // was before it started.
    bool refused = false;
    for (const auto& problem :
         ExpandedValueProblems(step, lenientValues, [&](std::u16string_view text) { return host.Expand(text); })) {
      PrintError(file_.Describe(problem));
      refused = refused || !problem.warning;
    }
    if (refused) {
      result = {false,
                "task stopped at step " + std::to_string(i) + " (" + step.action + ", " + file_.Where(step) +
                    "): a value does not fit its key",
                true};
      break;
    }
    ++runs_[static_cast<size_t>(i)];
    if (progress) {
      const int32_t loop = StepType(i) == atBeginLoop ? i : EnclosingLoop(i);
      progress->StepStarted(i, step.action, loop >= 0 ? runs_[static_cast<size_t>(loop)] : 0);
    }
    nextStep_ = -1;
    std::string failure;
    bool ok = true;
    const auto stepStarted = Clock::now();
    if (index >= 0) {
      std::u16string block = blocks_[static_cast<size_t>(i)];
      TAFActionParams params = ParamsFor(block, i);
      host.lastErrorSet = false;
      try {
        ok = plugin_.ActionsInfo->ExecAction(index, bridge, &params) != 0;
        host.Event(ok ? "  -> true" : "  -> false");
        // The message itself stands in the transcript above; only a quiet
        // transcript, which leaves it out, gets it in the summary.
        if (!ok) {
          failure = host.lastErrorSet ? "last error " + std::to_string(host.lastErrorCode) : "returned false";
          if (host.lastErrorSet && host.options.quiet) failure += " " + Quote(host.lastErrorText);
        }
      } catch (const std::exception& e) {
        ok = false;
        host.Event("  exception " + Quote(qm::Utf8ToUtf16(e.what())));
        failure = "exception";
        if (host.options.quiet) failure += " " + Quote(qm::Utf8ToUtf16(e.what()));
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
    // A built-in says why it failed, as a plug-in step's error stands in the
    // transcript; the outcome line repeats it for a quiet transcript.
    if (!ok && index < 0) host.Event("  error: " + failure);
    const auto stepTime = Clock::now() - stepStarted;
    inSteps += stepTime;
    if (host.options.time) host.Event("  time " + milliseconds(stepTime));
    if (!ok && !step.continueOnError) {
      result = {false, "task failed at step " + std::to_string(i) + " (" + step.action + ", " + file_.Where(step) +
                           "): " + failure};
      break;
    }
    i = nextStep_ >= 0 ? nextStep_ : i + 1;
  }
  progress.reset();
  JobStop();
  // The sums print with --quiet too: the benches read them.
  if (host.options.time) {
    Print("time in steps " + milliseconds(inSteps));
    Print("time total " + milliseconds(Clock::now() - started));
  }
  if (bridge->references != 1) {
    // A loop stopped half way keeps its reference on purpose; say so, but it
    // is not a failure of the host.
    host.Event("task interface references still held by the plug-in: " + std::to_string(bridge->references - 1));
    // The host lets go; the plug-in's last Release deletes it (at the latest
    // when the library unloads and frees what its tasks left behind).
    bridge->orphaned = true;
    --bridge->references;
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
