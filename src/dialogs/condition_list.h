// The conditions of the Data Loop and Filter Data dialogs: the AND/OR choice
// and the list of conditions with its commands, read from and written to the
// step's `conditionmode`, `conditionscount` and `condition...` keys.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/condition_editor.h"
#include "dialogs/list_commands.h"

namespace qm {

class TQMParamParser;

class ConditionList {
 public:
  static constexpr std::array<std::u16string_view, 2> kModeItems = {u"All conditions must be met (AND)",
                                                                    u"At least one condition must be met (OR)"};
  static constexpr std::array<std::u16string_view, 4> kColumnHeadings = {u"Col #", u"Substring or regex",
                                                                         u"Case sensitive", u"Regex"};
  static constexpr std::array<std::u16string_view, 3> kMenuCaptions = {u"Add condition...", u"Edit condition...",
                                                                       u"Remove condition"};

  // `conditionmode`, then `conditionscount` stored lines, each split into
  // its fields and shown as stored (a missing line is an empty one).
  void Load(const TQMParamParser& block);
  // `conditionmode`, `conditionscount` and each row joined into its line.
  void Save(TQMParamParser& block) const;

  // A row's texts: column, expression, and "YES" or "no" for each flag.
  static std::array<std::u16string, 4> RowTexts(const ConditionFields& condition);

  std::optional<Beep> Refusal(ListCommand command, int32_t selected) const {
    return ListRefusal(command, selected, conditions.size());
  }
  // "Add": the condition editor empty; its OK appends the condition.
  static ConditionEditor BeginAdd() { return ConditionEditor(true); }
  void FinishAdd(const ConditionEditor& editor) { conditions.push_back(editor.fields); }
  // "Edit": the condition editor on the selected row; its OK rewrites it.
  std::optional<ConditionEditor> BeginEdit(int32_t selected) const;
  void FinishEdit(int32_t selected, const ConditionEditor& editor);
  // "Remove": deletes the selected row without asking; false when none is.
  bool Remove(int32_t selected);

  bool orMode = false;
  std::vector<ConditionFields> conditions;

 private:
  bool IsRow(int32_t row) const { return !ListRefusal(ListCommand::Edit, row, conditions.size()); }
};

}  // namespace qm
