// Checks a whole task before its first step runs: every action ID known (with
// the nearest one suggested), every key one its action reads (a warning), and
// end-loop and break-loop inside a loop.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "task_file.h"

namespace qmhost {

struct CatalogueEntry {
  std::string id;
  int32_t type = 0;  // atSimple, atBeginLoop, ...
};

// Adds what it finds to `file.problems`. A value that does not fit its key
// is an error, or only a warning when `lenient` (tasks that hand the plug-in
// odd values on purpose).
void CheckTask(TaskFile& file, const std::vector<CatalogueEntry>& catalogue, bool lenient = false);

// The values with "{" in keys whose variables are expanded, checked once
// `expand` has expanded them (as the step runs); errors unless `lenient`.
std::vector<TaskProblem> ExpandedValueProblems(const TaskStep& step, bool lenient,
                                               const std::function<std::u16string(std::u16string_view)>& expand);

// The candidate nearest to `word`, letter case ignored; empty when none is
// close enough to be a likely misspelling.
std::string Nearest(const std::string& word, const std::vector<std::string>& candidates);

}  // namespace qmhost
