#include "dialogs/information_editor.h"

#include "boundary/param_parser.h"
#include "core/step_keys.h"

namespace qm {

void InformationEditor::Load(const TQMParamParser& block) {
  recordCountVar = block.GetString(keys::kRecordCountVar);
  columnCountVar = block.GetString(keys::kColCountVar);
  pages.Load(block);
}

void InformationEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetString(keys::kRecordCountVar, recordCountVar);
  block.SetString(keys::kColCountVar, columnCountVar);
  pages.Save(block);
  WriteProducedVariables(block, ProducedVariables());
}

}  // namespace qm
