#include "dialogs/move_column_editor.h"

#include "boundary/param_parser.h"
#include "core/messages.h"
#include "core/step_keys.h"

namespace qm {

void MoveColumnEditor::Load(const TQMParamParser& block) {
  from = block.GetString(keys::kFromPos);
  to = block.GetString(keys::kToPos);
  pages.Load(block);
}

void MoveColumnEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetString(keys::kFromPos, from);
  block.SetString(keys::kToPos, to);
  pages.Save(block);
  WriteProducedVariables(block, {});
}

CheckResult<MoveColumnEditor::Control> MoveColumnEditor::Check() const {
  if (IsBlank(from)) return Fail(Control{MoveColumnControl::From}, msg::kValueEmpty);
  if (IsBlank(to)) return Fail(Control{MoveColumnControl::To}, msg::kValueEmpty);
  return pages.Check<Control>();
}

}  // namespace qm
