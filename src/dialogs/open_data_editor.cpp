#include "dialogs/open_data_editor.h"

#include "boundary/param_parser.h"

namespace qm {

void OpenDataEditor::Load(const TQMParamParser& block) {
  source.Load(block);
  format.Load(block);
}

void OpenDataEditor::Save(TQMParamParser& block) const {
  block.Clear();
  source.Save(block);
  format.Save(block);
  WriteProducedVariables(block, {});
}

CheckResult<OpenDataEditor::Control> OpenDataEditor::Check() const {
  if (auto failure = source.Check()) return Widen<Control>(failure);
  return Widen<Control>(format.Check());
}

}  // namespace qm
