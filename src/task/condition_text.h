// The stored text of a step's record conditions, which the loop and filter
// actions read and their editors write: one comma-text line per condition
// ("2,\"New York\",0,0": column from 1, expression, case-sensitive flag,
// regular-expression flag) under the keys condition00000000,
// condition00000001..., with their count and the AND/OR mode (the keys are
// declared in core/step_keys.h).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qm {

// The four fields of a stored condition line as the editors show them: the
// column and the expression as stored, the flags read as non-zero integers.
struct ConditionFields {
  std::u16string column;
  std::u16string expression;
  bool caseSensitive = false;
  bool regex = false;
  bool operator==(const ConditionFields&) const = default;
};

// Splits a stored line by the comma-text rules; missing fields are empty,
// fields after the fourth are ignored, a flag that is not an integer is false.
ConditionFields SplitCondition(std::u16string_view line);
// The stored line of a condition, the flags written as "1" or "0".
std::u16string JoinCondition(const ConditionFields& fields);

}  // namespace qm
