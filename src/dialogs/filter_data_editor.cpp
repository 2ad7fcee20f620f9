#include "dialogs/filter_data_editor.h"

#include "boundary/param_parser.h"
#include "core/messages.h"
#include "core/step_keys.h"

namespace qm {

void FilterDataEditor::Load(const TQMParamParser& block) {
  deleteMatching = block.GetBool(keys::kReverseMode);
  conditions.Load(block);
  pages.Load(block);
}

void FilterDataEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetBool(keys::kReverseMode, deleteMatching);
  conditions.Save(block);
  pages.Save(block);
}

CheckResult<FilterDataEditor::Control> FilterDataEditor::Check() const {
  if (conditions.conditions.empty()) return Fail(Control{FilterDataControl::List}, msg::kListEmpty);
  return pages.Check<Control>();
}

}  // namespace qm
