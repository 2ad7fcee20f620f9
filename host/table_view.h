// The task's table as aligned text for the show-table step: the CSV text a
// Save to a variable wrote (tab-delimited, double quotes), one line a record.
#pragma once

#include <string>
#include <vector>

namespace qmhost {

// The first `limit` records of `csv` as lines of cells padded to their
// column's width, control characters escaped, then "... N more lines" when
// some are left out.
std::vector<std::string> TableView(const std::u16string& csv, size_t limit);

}  // namespace qmhost
