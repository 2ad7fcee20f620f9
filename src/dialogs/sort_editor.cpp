#include "dialogs/sort_editor.h"

#include "boundary/param_parser.h"
#include "core/messages.h"
#include "core/step_keys.h"

namespace qm {

void SortEditor::Load(const TQMParamParser& block) {
  column = block.GetString(keys::kSortColumn);
  direction = block.GetBool(keys::kSortDirection) ? SortDirection::Descending : SortDirection::Ascending;
  mode = block.GetBool(keys::kSortMode) ? SortMode::Numbers : SortMode::Strings;
  caseSensitive = block.GetBool(keys::kSortCaseSensitive);
  pages.Load(block);
}

void SortEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetString(keys::kSortColumn, column);
  block.SetBool(keys::kSortDirection, direction == SortDirection::Descending);
  block.SetBool(keys::kSortMode, mode == SortMode::Numbers);
  block.SetBool(keys::kSortCaseSensitive, caseSensitive);
  pages.Save(block);
  WriteProducedVariables(block, {});
}

CheckResult<SortEditor::Control> SortEditor::Check() const {
  if (IsBlank(column)) return Fail(Control{SortControl::Column}, msg::kValueEmpty);
  return pages.Check<Control>();
}

bool SortEditor::IsEnabled(SortControl control) const {
  return control == SortControl::CaseSensitive ? mode == SortMode::Strings : true;
}

}  // namespace qm
