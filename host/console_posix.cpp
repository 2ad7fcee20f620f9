#include <csignal>
#include <cstring>

#include <unistd.h>

#include "console.h"

namespace qmhost {

std::vector<std::string> Utf8Arguments(int argc, char** argv) { return {argv, argv + argc}; }

void PrepareConsole() {
  // A reader that goes away (qmhost run x.qmt | head) makes the next write
  // fail, which ends qmhost with exit 6, instead of ending it by a signal.
  std::signal(SIGPIPE, SIG_IGN);
}

bool StderrIsTerminal() { return isatty(STDERR_FILENO) != 0; }

std::filesystem::path PathOf(const std::string& utf8) { return utf8; }

std::string SystemErrorText(unsigned long code) { return std::strerror(static_cast<int>(code)); }

}  // namespace qmhost
