// qmhost's command line: options and a command, read strictly. An unknown
// option, a missing or bad value or a wrong number of arguments is named.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace qmhost {

struct CommandLine {
  std::string command;            // list, about, run, configure, keys; empty with help or version
  std::vector<std::string> args;  // the command's arguments
  bool help = false;
  bool version = false;
  std::string pluginPath;  // empty: the library next to qmhost
  std::string hostVersion;
  std::vector<std::pair<std::string, std::string>> variables;
  int32_t taskId = 1;
  uint64_t maxSteps = 100000000;
  bool quiet = false;
  bool traceExpand = false;
  bool refuseBridge = false;
  bool time = false;
};

// False with `error` set ("unknown option --bogus", ...) when the words
// given do not make a command line.
bool ParseCommandLine(const std::vector<std::string>& words, CommandLine& line, std::string& error);

extern const char kUsage[];

}  // namespace qmhost
