#include "dialogs/condition_list.h"

#include "boundary/param_parser.h"
#include "core/step_keys.h"

namespace qm {

void ConditionList::Load(const TQMParamParser& block) {
  orMode = block.GetBool(keys::kConditionMode);
  conditions.clear();
  const int32_t count = block.GetInteger(keys::kConditionsCount);
  for (int32_t i = 0; i < count; ++i) conditions.push_back(SplitCondition(block.GetString(keys::kCondition, i)));
}

void ConditionList::Save(TQMParamParser& block) const {
  block.SetBool(keys::kConditionMode, orMode);
  block.SetInteger(keys::kConditionsCount, static_cast<int32_t>(conditions.size()));
  for (size_t i = 0; i < conditions.size(); ++i) {
    block.SetString(keys::kCondition, static_cast<int32_t>(i), JoinCondition(conditions[i]));
  }
}

std::array<std::u16string, 4> ConditionList::RowTexts(const ConditionFields& c) {
  return {c.column, c.expression, c.caseSensitive ? u"YES" : u"no", c.regex ? u"YES" : u"no"};
}

std::optional<ConditionEditor> ConditionList::BeginEdit(int32_t selected) const {
  if (!IsRow(selected)) return std::nullopt;
  return ConditionEditor(false, conditions[static_cast<size_t>(selected)]);
}

void ConditionList::FinishEdit(int32_t selected, const ConditionEditor& editor) {
  if (IsRow(selected)) conditions[static_cast<size_t>(selected)] = editor.fields;
}

bool ConditionList::Remove(int32_t selected) {
  if (!IsRow(selected)) return false;
  conditions.erase(conditions.begin() + selected);
  return true;
}

}  // namespace qm
