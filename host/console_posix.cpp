#include <cstring>

#include "console.h"

namespace qmhost {

std::vector<std::string> Utf8Arguments(int argc, char** argv) { return {argv, argv + argc}; }

void PrepareConsole() {}

std::filesystem::path PathOf(const std::string& utf8) { return utf8; }

std::string SystemErrorText(unsigned long code) { return std::strerror(static_cast<int>(code)); }

}  // namespace qmhost
