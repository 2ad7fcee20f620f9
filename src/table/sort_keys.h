// The order a sort puts records in by one of their cells: as numbers, each
// cell read once, or as text, compared unit by unit (ASCII letters folded
// when the case does not count), each cell read once per four units that
// decide. The order is not stable.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "table/record.h"

namespace qm {

// Each writes to order[0, records.size()) the rows of `records` in ascending
// order of their cell at `column`. A record without that cell raises the
// list's index error with the index, before anything is written.
// A cell that is no number counts as 0.
void NumberOrder(const std::vector<Record>& records, int32_t column, uint32_t* order);
void TextOrder(const std::vector<Record>& records, int32_t column, bool caseSensitive, uint32_t* order);

// A text read as a floating-point number with the process's decimal
// separator: blanks around it, an optional sign, digits with an optional
// fraction, an optional exponent. Anything else gives false.
bool TryTextToFloat(CellText text, double& value);
// -1, 0 or 1; a text that is no number counts as 0.
int32_t NumericCompare(std::u16string_view a, std::u16string_view b);

}  // namespace qm
