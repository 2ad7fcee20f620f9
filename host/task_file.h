// Task files: a step per section. A section starts with a line
//   [ACTION_ID]            or   [ACTION_ID continue]
// naming a plug-in action ID or a host built-in; the lines up to the next
// section are the step's parameter block, verbatim. Lines starting with "##"
// and blank lines are left out of the block; the "##" lines directly above a
// header are the step's comments. The file is UTF-8, with or without a BOM.
#pragma once

#include <string>
#include <vector>

namespace qmhost {

struct TaskStep {
  std::string action;
  bool continueOnError = false;  // a failed step does not stop the task
  std::vector<std::u16string> lines;
  std::vector<int> lineNumbers;  // each parameter line's line in the file
  // The "##" lines that stand directly before the step's header, as written.
  std::vector<std::string> comments;
  int sourceLine = 0;  // the header's line

  // The parameter block as the host hands it over: every line ends in CR LF.
  std::u16string Block() const;
  // The value of name=value in the block (first match, names compared as given).
  std::u16string Value(std::u16string_view name) const;
};

// A problem found in a task file, at a line (0: the file as a whole).
struct TaskProblem {
  int line = 0;
  bool warning = false;  // reported, but the task still runs
  std::string message;
};

struct TaskFile {
  std::string path;  // as given; "-" is standard input
  std::vector<TaskStep> steps;
  std::vector<TaskProblem> problems;

  bool HasErrors() const;
  // "PATH:LINE: message" ("warning: " before a warning's message), in line order.
  std::vector<std::string> Report() const;
  // One problem as Report writes it.
  std::string Describe(const TaskProblem& problem) const;
  // Where a step stands, as "PATH:LINE".
  std::string Where(const TaskStep& step) const;
};

// Reads and parses a task file (path "-": standard input). False when it
// cannot be read or is not UTF-8 text; `file.problems` then says why.
// Malformed lines are listed in `file.problems` and left out of the steps.
bool ReadTaskFile(const std::string& path, TaskFile& file);

}  // namespace qmhost
