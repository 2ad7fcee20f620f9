#include "task_file.h"

#include <fstream>
#include <sstream>

#include "core/utf.h"

namespace qmhost {

std::u16string TaskStep::Block() const {
  std::u16string block;
  for (const auto& line : lines) {
    block += line;
    block += u"\r\n";
  }
  return block;
}

std::u16string TaskStep::Value(std::u16string_view name) const {
  for (const auto& line : lines) {
    if (line.size() > name.size() && line.compare(0, name.size(), name) == 0 && line[name.size()] == u'=') {
      return line.substr(name.size() + 1);
    }
  }
  return {};
}

std::vector<TaskStep> ReadTaskFile(const std::string& path, std::string& error) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    error = "cannot read task file " + path;
    return {};
  }
  std::stringstream content;
  content << in.rdbuf();
  std::vector<TaskStep> steps;
  std::istringstream lines(content.str());
  std::string line;
  std::vector<std::string> comments;  // "##" lines since the last other line
  int number = 0;
  while (std::getline(lines, line)) {
    ++number;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.rfind("##", 0) == 0) {
      // The golden runner's first-line "## qmhost: ARGS" is no comment on a step.
      if (number > 1 || line.rfind("## qmhost:", 0) != 0) comments.push_back(line);
      continue;
    }
    if (line.empty()) {
      comments.clear();
      continue;
    }
    if (line.front() == '[' && line.back() == ']') {
      TaskStep step;
      step.comments = std::move(comments);
      comments.clear();
      std::istringstream header(line.substr(1, line.size() - 2));
      header >> step.action;
      for (std::string flag; header >> flag;) {
        if (flag != "continue") {
          error = path + ":" + std::to_string(number) + ": unknown step flag " + flag;
          return {};
        }
        step.continueOnError = true;
      }
      step.sourceLine = number;
      steps.push_back(std::move(step));
      continue;
    }
    if (steps.empty()) {
      error = path + ":" + std::to_string(number) + ": a parameter line before the first [step]";
      return {};
    }
    comments.clear();
    steps.back().lines.push_back(qm::Utf8ToUtf16(line));
  }
  return steps;
}

}  // namespace qmhost
