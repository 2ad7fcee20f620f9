// qmhost's command line: options and a command, read strictly. An unknown
// option, a missing or bad value or a wrong number of arguments is named.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace qmhost {

struct CommandLine {
  std::string command;            // list, about, run, configure, keys, inspect; empty with help or version
  std::vector<std::string> args;  // the command's arguments
  bool help = false;              // with a command: that command's help
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
  bool lenient = false;   // a value that does not fit its key is only a warning
  bool progress = false;  // the running step on stderr, even when stderr is no terminal
};

// False with `error` set ("unknown option --bogus", ...) when the words
// given do not make a command line.
bool ParseCommandLine(const std::vector<std::string>& words, CommandLine& line, std::string& error);

extern const char kUsage[];
// The help text of one command (`qmhost COMMAND --help`), or null for an
// unknown command.
const char* CommandHelp(const std::string& command);

}  // namespace qmhost
