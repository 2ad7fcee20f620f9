#include "task_file.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

#include "file_bytes.h"
#include "utf8_text.h"
#include "core/utf.h"

namespace qmhost {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string Trimmed(const std::string& text) {
  size_t first = 0;
  size_t last = text.size();
  while (first < last && IsBlank(text[first])) ++first;
  while (last > first && IsBlank(text[last - 1])) --last;
  return text.substr(first, last - first);
}

bool ReadBytes(const std::string& path, std::string& bytes, std::string& reason) {
  if (path != "-") return ReadFileBytes(path, bytes, reason);
  try {
    bytes.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
  } catch (const std::exception&) {
    std::cin.setstate(std::ios::badbit);
  }
  if (std::cin.bad()) reason = "a read error on standard input";
  return reason.empty();
}

}  // namespace

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

bool TaskFile::HasErrors() const {
  return std::any_of(problems.begin(), problems.end(), [](const TaskProblem& p) { return !p.warning; });
}

std::vector<std::string> TaskFile::Report() const {
  std::vector<TaskProblem> sorted = problems;
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const TaskProblem& a, const TaskProblem& b) { return a.line < b.line; });
  std::vector<std::string> lines;
  for (const auto& p : sorted) lines.push_back(Describe(p));
  return lines;
}

std::string TaskFile::Describe(const TaskProblem& p) const {
  return path + ":" + (p.line > 0 ? std::to_string(p.line) + ":" : "") + " " + (p.warning ? "warning: " : "") +
         p.message;
}

std::string TaskFile::Where(const TaskStep& step) const { return path + ":" + std::to_string(step.sourceLine); }

bool ReadTaskFile(const std::string& path, TaskFile& file) {
  file.path = path == "-" ? "stdin" : path;
  std::string bytes;
  std::string reason;
  if (!ReadBytes(path, bytes, reason)) {
    file.problems.push_back({0, false, "cannot read the task file: " + reason});
    return false;
  }
  if (bytes.compare(0, 3, "\xEF\xBB\xBF") == 0) bytes.erase(0, 3);  // Notepad's UTF-8 mark
  const bool utf16Mark = bytes.compare(0, 2, "\xFF\xFE") == 0 || bytes.compare(0, 2, "\xFE\xFF") == 0;
  if (utf16Mark || bytes.find('\0') != std::string::npos) {
    file.problems.push_back({0, false,
                             utf16Mark ? "the task file is UTF-16 text; save it as UTF-8"
                                       : "the task file holds zero bytes: it is not UTF-8 text"});
    return false;
  }
  std::istringstream lines(bytes);
  std::string line;
  std::vector<std::string> comments;  // "##" lines since the last other line
  int number = 0;
  bool encodingBad = false;
  while (std::getline(lines, line)) {
    ++number;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const size_t bad = FirstInvalidUtf8(line);
    if (bad != std::string::npos) {
      file.problems.push_back({number, false,
                               "not UTF-8 text (byte " + HexByte(static_cast<unsigned char>(line[bad])) +
                                   " at column " + std::to_string(bad + 1) + "); save the task file as UTF-8"});
      encodingBad = true;
      continue;
    }
    if (line.rfind("##", 0) == 0) {
      // The golden runner's first-line "## qmhost: ARGS" is no comment on a step.
      if (number > 1 || line.rfind("## qmhost:", 0) != 0) comments.push_back(line);
      continue;
    }
    const std::string trimmed = Trimmed(line);
    if (trimmed.empty()) {
      comments.clear();
      continue;
    }
    if (trimmed.front() == '[') {
      TaskStep step;
      step.comments = std::move(comments);
      comments.clear();
      step.sourceLine = number;
      std::string inside = trimmed.substr(1);
      if (inside.empty() || inside.back() != ']') {
        file.problems.push_back({number, false, "malformed step header \"" + trimmed + "\": no closing ]"});
      } else {
        inside.pop_back();
      }
      std::istringstream header(inside);
      header >> step.action;
      if (step.action.empty()) file.problems.push_back({number, false, "a step header without an action ID"});
      for (std::string flag; header >> flag;) {
        if (flag == "continue") {
          step.continueOnError = true;
        } else {
          file.problems.push_back({number, false, "unknown step flag " + flag + " (the only flag is continue)"});
        }
      }
      file.steps.push_back(std::move(step));
      continue;
    }
    comments.clear();
    if (file.steps.empty()) {
      file.problems.push_back({number, false, "a parameter line before the first [step]"});
      continue;
    }
    const size_t eq = line.find('=');
    if (eq == std::string::npos || eq == 0) {
      file.problems.push_back({number, false,
                               std::string(eq == 0 ? "a parameter line without a name" : "a parameter line without =") +
                                   " (name=value): " + trimmed});
      continue;
    }
    file.steps.back().lines.push_back(qm::Utf8ToUtf16(line));
    file.steps.back().lineNumbers.push_back(number);
  }
  if (encodingBad) {
    file.problems.push_back({0, false, "the task file is not UTF-8 (Windows-1252 or Latin-1?); save it as UTF-8"});
    return false;
  }
  return true;
}

}  // namespace qmhost
