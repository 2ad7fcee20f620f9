#include "dialogs/move_column_editor.h"

#include "boundary/param_parser.h"
#include "core/messages.h"

namespace qm {

void MoveColumnEditor::Load(const TQMParamParser& block) {
  from = block.GetString(u"frompos");
  to = block.GetString(u"topos");
  pages.Load(block);
}

void MoveColumnEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetString(u"frompos", from);
  block.SetString(u"topos", to);
  pages.Save(block);
  WriteProducedVariables(block, {});
}

CheckResult<MoveColumnEditor::Control> MoveColumnEditor::Check() const {
  if (IsBlank(from)) return Fail(Control{MoveColumnControl::From}, msg::kValueEmpty);
  if (IsBlank(to)) return Fail(Control{MoveColumnControl::To}, msg::kValueEmpty);
  return pages.Check<Control>();
}

}  // namespace qm
