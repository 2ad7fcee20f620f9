// Task files: a step per section. A section starts with a line
//   [ACTION_ID]            or   [ACTION_ID continue]
// naming a plug-in action ID or a host built-in; the lines up to the next
// section are the step's parameter block, verbatim. Lines starting with "##"
// and blank lines are left out of the block; the "##" lines directly above a
// header are the step's comments.
#pragma once

#include <string>
#include <vector>

namespace qmhost {

struct TaskStep {
  std::string action;
  bool continueOnError = false;  // a failed step does not stop the task
  std::vector<std::u16string> lines;
  // The "##" lines that stand directly before the step's header, as written.
  std::vector<std::string> comments;
  int sourceLine = 0;

  // The parameter block as the host hands it over: every line ends in CR LF.
  std::u16string Block() const;
  // The value of name=value in the block (first match, names compared as given).
  std::u16string Value(std::u16string_view name) const;
};

// Empty with `error` set when the file cannot be read or is malformed.
std::vector<TaskStep> ReadTaskFile(const std::string& path, std::string& error);

}  // namespace qmhost
