#include "task_check.h"

#include <algorithm>
#include <cctype>

#include "abi/host_abi.h"
#include "action_keys.h"
#include "core/utf.h"

namespace qmhost {

namespace {

std::string Folded(const std::string& text) {
  std::string out = text;
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

size_t Distance(const std::string& a, const std::string& b) {
  std::vector<size_t> row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t above = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
      diagonal = above;
    }
  }
  return row[b.size()];
}

std::string Suggestion(const std::string& word, const std::vector<std::string>& candidates) {
  const std::string nearest = Nearest(word, candidates);
  return nearest.empty() ? std::string() : "; did you mean " + nearest + "?";
}

using Expander = std::function<std::u16string(std::u16string_view)>;

// Each value of the step checked against its key. Without `expand` (before
// the task runs) every value but those with "{" in keys the plug-in expands;
// with it (as the step runs) only those, expanded.
std::vector<TaskProblem> ValueProblems(const TaskStep& step, bool lenient, const Expander* expand) {
  std::vector<TaskProblem> problems;
  const ActionKeys* keys = FindActionKeys(step.action);
  for (size_t i = 0; keys && i < step.lines.size(); ++i) {
    const std::u16string& line = step.lines[i];
    const size_t eq = line.find(u'=');
    const std::string name = qm::Utf16ToUtf8(line.substr(0, eq));
    const StepKey* key = FindKey(*keys, name);
    if (!key) continue;
    const std::u16string value = line.substr(eq + 1);
    const bool later = key->Expanded() && value.find(u'{') != std::u16string::npos;
    if (later != (expand != nullptr)) continue;
    const std::u16string read = later ? (*expand)(value) : value;
    std::string problem = ValueProblem(*key, read);
    if (problem.empty()) continue;
    std::string shown = name + "=" + qm::Utf16ToUtf8(value);
    if (later) shown += " (expanded: " + qm::Utf16ToUtf8(read) + ")";
    if (!key->Expanded() && value.find(u'{') != std::u16string::npos) problem += "; variables are not expanded here";
    problems.push_back({step.lineNumbers[i], lenient, step.action + ": bad value " + shown + ": " + problem});
  }
  return problems;
}

}  // namespace

std::vector<TaskProblem> ExpandedValueProblems(const TaskStep& step, bool lenient, const Expander& expand) {
  return ValueProblems(step, lenient, &expand);
}

std::string Nearest(const std::string& word, const std::vector<std::string>& candidates) {
  const std::string folded = Folded(word);
  std::string best;
  size_t bestDistance = std::max<size_t>(2, folded.size() / 3) + 1;
  for (const auto& candidate : candidates) {
    const size_t d = Distance(folded, Folded(candidate));
    if (d < bestDistance) {
      best = candidate;
      bestDistance = d;
    }
  }
  return best;
}

void CheckTask(TaskFile& file, const std::vector<CatalogueEntry>& catalogue, bool lenient) {
  std::vector<std::string> ids;
  for (const auto& entry : catalogue) ids.push_back(entry.id);
  for (const auto& action : AllActionKeys()) {
    if (action.builtin) ids.push_back(action.id);
  }
  std::vector<const TaskStep*> open;  // loops begun and not yet ended at this step
  for (const TaskStep& step : file.steps) {
    if (step.action.empty()) continue;  // reported with its header
    const auto known = std::find(ids.begin(), ids.end(), step.action);
    if (known == ids.end()) {
      file.problems.push_back({step.sourceLine, false, "unknown action " + step.action + Suggestion(step.action, ids)});
      continue;
    }
    const auto entry =
        std::find_if(catalogue.begin(), catalogue.end(), [&](const CatalogueEntry& e) { return e.id == step.action; });
    if (entry != catalogue.end() && entry->type == atBeginLoop) open.push_back(&step);
    if (step.action == "end-loop" || step.action == "break-loop") {
      if (open.empty()) file.problems.push_back({step.sourceLine, false, step.action + " outside a loop"});
      if (step.action == "end-loop" && !open.empty()) open.pop_back();
    }
    const ActionKeys* keys = FindActionKeys(step.action);
    if (!keys) continue;  // an action this qmhost has no key list for
    std::vector<std::string> names;
    for (const StepKey* key : keys->keys) names.emplace_back(key->name8);
    for (size_t i = 0; i < step.lines.size(); ++i) {
      const std::string name = qm::Utf16ToUtf8(step.lines[i].substr(0, step.lines[i].find(u'=')));
      if (ReadsKey(*keys, name)) continue;
      file.problems.push_back(
          {step.lineNumbers[i], true, step.action + " never reads the key " + name + Suggestion(name, names)});
    }
    for (auto& problem : ValueProblems(step, lenient, nullptr)) file.problems.push_back(std::move(problem));
  }
  // A loop without its end runs its steps once; a task may mean that (a loop
  // left open at the stop), so it is a warning.
  for (const TaskStep* step : open) {
    file.problems.push_back({step->sourceLine, true, step->action + " without an end-loop: its steps run once"});
  }
}

}  // namespace qmhost
