#include "dialogs/data_loop_editor.h"

#include "boundary/param_parser.h"
#include "core/messages.h"
#include "core/step_keys.h"

namespace qm {

void DataLoopEditor::Load(const TQMParamParser& block) {
  rowNumberVar = block.GetString(keys::kRowVarName);
  rowVar = block.GetString(keys::kLineVarName);
  jsonFormat = block.GetBool(keys::kRowFormat);
  conditions.Load(block);
  pages.Load(block);
}

void DataLoopEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetString(keys::kRowVarName, rowNumberVar);
  block.SetString(keys::kLineVarName, rowVar);
  block.SetBool(keys::kRowFormat, jsonFormat);
  conditions.Save(block);
  pages.Save(block);
  WriteProducedVariables(block, ProducedVariables());
}

CheckResult<DataLoopEditor::Control> DataLoopEditor::Check() const {
  if (IsBlank(rowNumberVar) && IsBlank(rowVar)) return Fail(Control{DataLoopControl::RowNumberVar}, msg::kValueEmpty);
  return pages.Check<Control>();
}

}  // namespace qm
