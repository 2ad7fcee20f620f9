// `qmhost inspect FILE`: which Open Data keys fit a CSV file, found from the
// start of the file, with warnings about what the plug-in reads in its own
// way, and a ready [A_CSV_OPEN] step.
#pragma once

#include <string>

namespace qmhost {

// Prints the findings and the step on stdout; 0, or 2 when the file cannot
// be read (the reason on stderr).
int Inspect(const std::string& path);

}  // namespace qmhost
