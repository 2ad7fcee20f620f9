#include "dialogs/save_data_editor.h"

#include "boundary/param_parser.h"

namespace qm {

void SaveDataEditor::Load(const TQMParamParser& block) {
  target.Load(block);
  format.Load(block);
}

void SaveDataEditor::Save(TQMParamParser& block) const {
  block.Clear();
  target.Save(block);
  format.Save(block);
  WriteProducedVariables(block, ProducedVariables());
}

std::vector<std::u16string_view> SaveDataEditor::ProducedVariables() const { return {target.ProducedVariable()}; }

CheckResult<SaveDataEditor::Control> SaveDataEditor::Check() const {
  if (auto failure = target.Check()) return Widen<Control>(failure);
  return Widen<Control>(format.Check());
}

}  // namespace qm
