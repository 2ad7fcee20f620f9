// Checks a whole task before its first step runs: every action ID known (with
// the nearest one suggested), every key one its action reads (a warning), and
// end-loop and break-loop inside a loop.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "task_file.h"

namespace qmhost {

struct CatalogueEntry {
  std::string id;
  int32_t type = 0;  // atSimple, atBeginLoop, ...
};

// Adds what it finds to `file.problems`.
void CheckTask(TaskFile& file, const std::vector<CatalogueEntry>& catalogue);

// The candidate nearest to `word`, letter case ignored; empty when none is
// close enough to be a likely misspelling.
std::string Nearest(const std::string& word, const std::vector<std::string>& candidates);

}  // namespace qmhost
