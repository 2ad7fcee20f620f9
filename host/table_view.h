// The task's table as aligned text for the show-table step: its first
// records, headed by the column numbers and led by the row numbers that the
// actions' parameters use (both from 1).
#pragma once

#include <string>
#include <vector>

namespace qmhost {

// One line of column numbers, then one line per record of cells padded to
// their column's width, control characters escaped; then "... N more
// records" when `more` records are left out and "... N more columns" when
// `moreColumns` columns are.
std::vector<std::string> TableView(const std::vector<std::vector<std::u16string>>& records, size_t more,
                                   size_t moreColumns = 0);

}  // namespace qmhost
