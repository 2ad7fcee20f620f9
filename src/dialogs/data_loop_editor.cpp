#include "dialogs/data_loop_editor.h"

#include "boundary/param_parser.h"
#include "core/messages.h"

namespace qm {

void DataLoopEditor::Load(const TQMParamParser& block) {
  rowNumberVar = block.GetString(u"rowvarname");
  rowVar = block.GetString(u"linevarname");
  jsonFormat = block.GetBool(u"Format");
  conditions.Load(block);
  pages.Load(block);
}

void DataLoopEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetString(u"rowvarname", rowNumberVar);
  block.SetString(u"linevarname", rowVar);
  block.SetBool(u"Format", jsonFormat);
  conditions.Save(block);
  pages.Save(block);
  WriteProducedVariables(block, ProducedVariables());
}

CheckResult<DataLoopEditor::Control> DataLoopEditor::Check() const {
  if (IsBlank(rowNumberVar) && IsBlank(rowVar)) return Fail(Control{DataLoopControl::RowNumberVar}, msg::kValueEmpty);
  return pages.Check<Control>();
}

}  // namespace qm
