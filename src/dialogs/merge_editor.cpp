#include "dialogs/merge_editor.h"

#include "boundary/param_parser.h"
#include "core/step_keys.h"

namespace qm {

int32_t MergeEditor::PageOf(const Control& control) {
  if (const auto* own = std::get_if<MergeControl>(&control)) return *own == MergeControl::Note ? 0 : 2;
  return std::holds_alternative<SourceControl>(control) ? 0 : 1;
}

void MergeEditor::Load(const TQMParamParser& block) {
  mismatch = block.GetBool(keys::kAjustColumns) ? ColumnMismatch::AdjustColumns : ColumnMismatch::RaiseError;
  source.Load(block);
  format.Load(block);
}

void MergeEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetBool(keys::kAjustColumns, mismatch == ColumnMismatch::AdjustColumns);
  source.Save(block);
  format.Save(block);
  WriteProducedVariables(block, {});
}

CheckResult<MergeEditor::Control> MergeEditor::Check() const {
  if (auto failure = source.Check()) return Widen<Control>(failure);
  return Widen<Control>(format.Check());
}

}  // namespace qm
