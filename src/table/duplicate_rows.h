// Finds the rows of a table that repeat a later row, as Remove Duplicates
// deletes them: of each set of equal rows only the last one stays.
#pragma once

#include <cstdint>
#include <vector>

#include "table/record.h"

namespace qm {

// One flag a record, set for the rows to delete: every row that an equal row
// follows somewhere below it. Two rows are equal when their comma-text keys
// are (delimiter ",", quote '"', strict off), with letter case folded unless
// `caseSensitive`. `deleted` is set to the number of flags set.
std::vector<bool> FindDuplicateRows(const std::vector<Record>& records, bool caseSensitive, int32_t& deleted);

}  // namespace qm
