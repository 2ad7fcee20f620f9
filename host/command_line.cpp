#include "command_line.h"

#include <charconv>
#include <limits>

namespace qmhost {

const char kUsage[] =
    "usage: qmhost [options] COMMAND\n"
    "commands:\n"
    "  list                  the catalogue as the host sees it\n"
    "  about                 the about box text\n"
    "  run TASKFILE          run a task and print its transcript (- reads the task from stdin)\n"
    "  configure ACTION_ID [BLOCKFILE]\n"
    "                        open an action's editor on a block (Windows build)\n"
    "  keys [ACTION_ID]      the actions, or every key an action reads\n"
    "options:\n"
    "  --plugin PATH         the plug-in library (default: next to qmhost)\n"
    "  --host-version TEXT   the version the host claims (default 9.5.0.1)\n"
    "  --var NAME=VALUE      a host variable before the task starts (repeatable)\n"
    "  --task-id N           the task's identifier, 0 to 2147483647 (default 1)\n"
    "  --max-steps N         stop a task after N steps (default 100000000)\n"
    "  --quiet               print only the task's print lines, --time's sums and the outcome\n"
    "  --time                each step's wall time, their sum and the total\n"
    "  --trace-expand        print every variable expansion the plug-in asks for\n"
    "  --refuse-bridge       the task interface refuses the plug-in's cast\n"
    "  -h, --help            this text\n"
    "  --version             qmhost's version\n";

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

struct Arity {
  const char* command;
  size_t least;
  size_t most;
  const char* shape;
};

const Arity kCommands[] = {
    {"list", 0, 0, "list takes no arguments"},
    {"about", 0, 0, "about takes no arguments"},
    {"run", 1, 1, "run needs one TASKFILE (- for standard input)"},
    {"configure", 1, 2, "configure needs ACTION_ID and at most one BLOCKFILE"},
    {"keys", 0, 1, "keys takes at most one ACTION_ID"},
};

}  // namespace

bool ParseCommandLine(const std::vector<std::string>& words, CommandLine& line, std::string& error) {
  std::vector<std::string> positional;
  for (size_t i = 0; i < words.size(); ++i) {
    std::string word = words[i];
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
    } else if (word == "--quiet") {
      ok = flag(line.quiet);
    } else if (word == "--time") {
      ok = flag(line.time);
    } else if (word == "--trace-expand") {
      ok = flag(line.traceExpand);
    } else if (word == "--refuse-bridge") {
      ok = flag(line.refuseBridge);
    } else if (word.size() > 1 && word[0] == '-') {
      error = "unknown option " + word;
      ok = false;
    } else {
      positional.push_back(words[i]);
    }
    if (!ok) return false;
  }
  if (line.help || line.version) return true;
  if (positional.empty()) {
    error = "no command given";
    return false;
  }
  line.command = positional.front();
  line.args.assign(positional.begin() + 1, positional.end());
  for (const Arity& arity : kCommands) {
    if (line.command != arity.command) continue;
    if (line.args.size() < arity.least || line.args.size() > arity.most) {
      error = arity.shape;
      return false;
    }
    return true;
  }
  error = "unknown command " + line.command;
  return false;
}

}  // namespace qmhost
