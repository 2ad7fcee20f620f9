#include "dialogs/sort_editor.h"

#include "boundary/param_parser.h"
#include "core/messages.h"

namespace qm {

void SortEditor::Load(const TQMParamParser& block) {
  column = block.GetString(u"sortcolumn");
  direction = block.GetBoolDef(u"sortdirection", false) ? SortDirection::Descending : SortDirection::Ascending;
  mode = block.GetBoolDef(u"sortmode", false) ? SortMode::Numbers : SortMode::Strings;
  caseSensitive = block.GetBoolDef(u"casesensitive", false);
  pages.Load(block);
}

void SortEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetString(u"sortcolumn", column);
  block.SetBool(u"sortdirection", direction == SortDirection::Descending);
  block.SetBool(u"sortmode", mode == SortMode::Numbers);
  block.SetBool(u"casesensitive", caseSensitive);
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
