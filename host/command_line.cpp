#include "command_line.h"

#include <charconv>
#include <limits>

namespace qmhost {

const char kUsage[] =
    "usage: qmhost [options] COMMAND [ARGUMENTS]\n"
    "commands:\n"
    "  list                  the catalogue as the host sees it\n"
    "  about                 the about box text\n"
    "  run TASKFILE          run a task and print its transcript (- reads the task from stdin)\n"
    "  configure ACTION_ID [BLOCKFILE]\n"
    "                        open an action's editor on a block (Windows build)\n"
    "  keys [ACTION_ID]      the actions, or every key an action reads\n"
    "  inspect FILE          which Open Data keys fit a CSV file, as a ready step\n"
    "options:\n"
    "  --plugin PATH         the plug-in library (default: next to qmhost)\n"
    "  --host-version TEXT   the version the host claims (default 9.5.0.1)\n"
    "  --var NAME=VALUE      a host variable before the task starts (repeatable)\n"
    "  --task-id N           the task's identifier, 0 to 2147483647 (default 1)\n"
    "  --max-steps N         stop a task after N steps (default 100000000)\n"
    "  -q, --quiet           print only the task's own output, as it is, and --time's sums; the outcome on stderr\n"
    "  --time                each step's wall time, their sum and the total\n"
    "  --trace-expand        print every variable expansion the plug-in asks for, and its result\n"
    "  --refuse-bridge       the task interface refuses the plug-in's cast\n"
    "  --lenient             a value that does not fit its key is a warning, not an error\n"
    "  --progress            the running step on stderr once a second (default: when stderr is a terminal)\n"
    "  --                    what follows is no option\n"
    "  -h, --help            this text; after a command, that command's help\n"
    "  --version             qmhost's version\n"
    "exit codes:\n"
    "  0 done, 1 a step failed, 2 a usage or input error or a task the check refused,\n"
    "  3 the plug-in broke the memory rules, 4 the editor was cancelled,\n"
    "  5 the plug-in declined to load, 6 the transcript could not be written\n";

namespace {

template <typename Number>
bool ReadNumber(const std::string& text, Number max, Number& value) {
  Number parsed{};
  const char* end = text.data() + text.size();
  const auto [stop, ec] = std::from_chars(text.data(), end, parsed);
  if (text.empty() || ec != std::errc() || stop != end || parsed < 0 || parsed > max) return false;
  value = parsed;
  return true;
}

struct Command {
  const char* name;
  size_t least;
  size_t most;
  const char* shape;
  const char* help;
};

const Command kCommands[] = {
    {"list", 0, 0, "list takes no arguments",
     "usage: qmhost [options] list\n"
     "Loads the plug-in and prints its catalogue as the host sees it: the plug-in's\n"
     "record, then each action with its ID, name, type, images and description.\n"},
    {"about", 0, 0, "about takes no arguments",
     "usage: qmhost [options] about\n"
     "Loads the plug-in and prints the text of its about box.\n"},
    {"run", 1, 1, "run needs one TASKFILE (- for standard input)",
     "usage: qmhost [options] run TASKFILE\n"
     "Runs the task in TASKFILE (- reads it from standard input) and prints its\n"
     "transcript on stdout. The whole task is checked first: every problem is\n"
     "listed on stderr as FILE:LINE: message, and an error stops the task before\n"
     "its first step (exit 2). A value with {variables} is checked when its step\n"
     "runs, after expansion.\n"
     "options: --plugin, --host-version, --var, --task-id, --max-steps, -q/--quiet,\n"
     "--time, --trace-expand, --refuse-bridge, --lenient, --progress\n"
     "exit codes: 0 the task finished, 1 a step failed, 2 a usage or input error or\n"
     "a value the check refused, 3 the plug-in broke the memory rules, 5 the\n"
     "plug-in declined to load, 6 the transcript could not be written\n"},
    {"configure", 1, 2, "configure needs ACTION_ID and at most one BLOCKFILE",
     "usage: qmhost [options] configure ACTION_ID [BLOCKFILE]\n"
     "Opens the editor of the action ACTION_ID (as list shows it) on the block in\n"
     "BLOCKFILE (UTF-8, one name=value key a line; none: an empty block). On OK it\n"
     "prints the returned block, one key a line (exit 0); on Cancel \"cancelled\"\n"
     "(exit 4). The Windows build only: the native build says so (exit 2).\n"},
    {"keys", 0, 1, "keys takes at most one ACTION_ID",
     "usage: qmhost keys [ACTION_ID]\n"
     "Without an argument, the plug-in's actions and the host's built-ins; with\n"
     "one, every key that action reads, with its type, default and meaning. The\n"
     "task check compares a task's keys and values with the same table.\n"},
    {"inspect", 1, 1, "inspect needs one FILE",
     "usage: qmhost inspect FILE\n"
     "Reads the start of FILE (at most 1 MiB) and tells which Open Data keys fit\n"
     "it: the encoding, the delimiter, the quote character, whether the first\n"
     "line is a header, the line ends; warns about what the plug-in reads in its\n"
     "own way (cells with line breaks, decimal commas, a byte-order mark with\n"
     "encoding 0, rows with more or fewer cells than the first); and prints a\n"
     "ready [A_CSV_OPEN] step for a task file. Exit 0, or 2 when FILE cannot be\n"
     "read.\n"},
};

}  // namespace

const char* CommandHelp(const std::string& command) {
  for (const Command& c : kCommands) {
    if (command == c.name) return c.help;
  }
  return nullptr;
}

bool ParseCommandLine(const std::vector<std::string>& words, CommandLine& line, std::string& error) {
  std::vector<std::string> positional;
  bool optionsEnded = false;
  for (size_t i = 0; i < words.size(); ++i) {
    std::string word = words[i];
    if (optionsEnded || word == "-" || word.empty() || word[0] != '-') {
      positional.push_back(word);
      continue;
    }
    if (word == "--") {
      optionsEnded = true;
      continue;
    }
    std::string inlineValue;
    bool hasInline = false;
    if (word.rfind("--", 0) == 0 && word.find('=') != std::string::npos) {
      inlineValue = word.substr(word.find('=') + 1);
      word = word.substr(0, word.find('='));
      hasInline = true;
    }
    auto value = [&](std::string& out) {
      if (hasInline) {
        out = inlineValue;
        return true;
      }
      if (i + 1 >= words.size()) {
        error = "option " + word + " needs a value";
        return false;
      }
      out = words[++i];
      return true;
    };
    auto flag = [&](bool& out) {
      if (hasInline) {
        error = "option " + word + " takes no value";
        return false;
      }
      out = true;
      return true;
    };
    std::string text;
    bool ok = true;
    if (word == "-h" || word == "--help") {
      ok = flag(line.help);
    } else if (word == "--version") {
      ok = flag(line.version);
    } else if (word == "--plugin") {
      ok = value(line.pluginPath);
    } else if (word == "--host-version") {
      ok = value(line.hostVersion);
    } else if (word == "--var") {
      ok = value(text);
      if (ok && (text.find('=') == std::string::npos || text.find('=') == 0)) {
        error = "--var needs NAME=VALUE, not " + text;
        ok = false;
      }
      if (ok) line.variables.emplace_back(text.substr(0, text.find('=')), text.substr(text.find('=') + 1));
    } else if (word == "--task-id") {
      ok = value(text);
      if (ok && !ReadNumber<int32_t>(text, std::numeric_limits<int32_t>::max(), line.taskId)) {
        error = "--task-id needs a whole number from 0 to 2147483647, not " + text;
        ok = false;
      }
    } else if (word == "--max-steps") {
      ok = value(text);
      if (ok && !ReadNumber<uint64_t>(text, std::numeric_limits<uint64_t>::max(), line.maxSteps)) {
        error = "--max-steps needs a whole number from 0 to 18446744073709551615, not " + text;
        ok = false;
      }
    } else if (word == "-q" || word == "--quiet") {
      ok = flag(line.quiet);
    } else if (word == "--lenient") {
      ok = flag(line.lenient);
    } else if (word == "--progress") {
      ok = flag(line.progress);
    } else if (word == "--time") {
      ok = flag(line.time);
    } else if (word == "--trace-expand") {
      ok = flag(line.traceExpand);
    } else if (word == "--refuse-bridge") {
      ok = flag(line.refuseBridge);
    } else {
      error = "unknown option " + word;
      ok = false;
    }
    if (!ok) return false;
  }
  if (line.version && positional.empty()) return true;
  if (line.help) {
    // "qmhost run --help": that command's help; a command may stand alone.
    if (!positional.empty()) {
      line.command = positional.front();
      if (!CommandHelp(line.command)) {
        error = "unknown command " + line.command;
        return false;
      }
    }
    return true;
  }
  if (line.version) return true;
  if (positional.empty()) {
    error = "no command given";
    return false;
  }
  line.command = positional.front();
  line.args.assign(positional.begin() + 1, positional.end());
  for (const Command& c : kCommands) {
    if (line.command != c.name) continue;
    if (line.args.size() < c.least || line.args.size() > c.most) {
      error = c.shape;
      return false;
    }
    return true;
  }
  error = "unknown command " + line.command;
  return false;
}

}  // namespace qmhost
