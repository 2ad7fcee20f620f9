// The small dialog that adds or edits one record condition of the Data Loop
// and Filter Data lists: a column, a text or pattern and two flags.
#pragma once

#include <cstdint>
#include <string_view>
#include <utility>

#include "task/condition_text.h"

namespace qm {

enum class ConditionControl : uint8_t { ColumnLabel, Column, ExpressionLabel, Expression, UseRegex, CaseSensitive };

class ConditionEditor {
 public:
  static constexpr std::u16string_view kColumnLabel = u"Column number (from 1):";
  static constexpr std::u16string_view kUseRegex = u"Use regular expression";
  static constexpr std::u16string_view kCaseSensitive = u"Case sensitive";
  static constexpr std::u16string_view kTextLabel = u"Should contain text:";
  static constexpr std::u16string_view kPatternLabel = u"Should match regular expression:";

  // Add mode starts with empty fields and clear boxes.
  explicit ConditionEditor(bool addMode, ConditionFields fields = {})
      : fields(addMode ? ConditionFields{} : std::move(fields)), addMode_(addMode) {}

  std::u16string_view Caption() const { return addMode_ ? u"Add condition" : u"Edit condition"; }
  // The label above the expression follows the regular-expression box.
  std::u16string_view ExpressionLabel() const { return fields.regex ? kPatternLabel : kTextLabel; }
  bool AddMode() const { return addMode_; }
  // OK is never refused: the column is kept as typed, even empty or not a
  // number, and fails only when the step runs.

  ConditionFields fields;

 private:
  bool addMode_;
};

}  // namespace qm
