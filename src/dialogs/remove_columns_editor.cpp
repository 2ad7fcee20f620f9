#include "dialogs/remove_columns_editor.h"

#include "boundary/param_parser.h"
#include "core/messages.h"
#include "core/step_keys.h"

namespace qm {

void RemoveColumnsEditor::Load(const TQMParamParser& block) {
  columns = block.GetString(keys::kRemoveColumns);
  pages.Load(block);
}

void RemoveColumnsEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetString(keys::kRemoveColumns, columns);
  pages.Save(block);
  WriteProducedVariables(block, {});
}

CheckResult<RemoveColumnsEditor::Control> RemoveColumnsEditor::Check() const {
  if (IsBlank(columns)) return Fail(Control{RemoveColumnsControl::Columns}, msg::kValueEmpty);
  return pages.Check<Control>();
}

}  // namespace qm
