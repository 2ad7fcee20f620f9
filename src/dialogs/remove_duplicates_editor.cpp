#include "dialogs/remove_duplicates_editor.h"

#include "boundary/param_parser.h"
#include "core/convert.h"
#include "core/step_keys.h"

namespace qm {

void RemoveDuplicatesEditor::Load(const TQMParamParser& block) {
  caseSensitive = block.GetBool(keys::kDuplicatesCaseSensitive);
  variable = block.GetString(keys::kVarName);
  pages.Load(block);
}

void RemoveDuplicatesEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetBool(keys::kDuplicatesCaseSensitive, caseSensitive);
  block.SetString(keys::kVarName, Trim(variable));
  pages.Save(block);
  WriteProducedVariables(block, ProducedVariables());
}

}  // namespace qm
