// What qmhost takes from and gives to its console: the command line as
// UTF-8 words, UTF-8 output, file names as the system wants them, and the
// system's own text for its error numbers.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace qmhost {

// The program's arguments, argv[0] included, as UTF-8 (on Windows read from
// the UTF-16 command line, not the ANSI code page).
std::vector<std::string> Utf8Arguments(int argc, char** argv);
// Binary standard streams, so the transcript has the same bytes everywhere,
// and a console that shows UTF-8.
void PrepareConsole();
// A UTF-8 file name as a path the system opens without a code page in between.
std::filesystem::path PathOf(const std::string& utf8);
// True when standard error goes to a terminal (a person watches it).
bool StderrIsTerminal();
// The system's message for an error number, without a trailing line break.
std::string SystemErrorText(unsigned long code);

}  // namespace qmhost
