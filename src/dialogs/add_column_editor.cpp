#include "dialogs/add_column_editor.h"

#include "boundary/param_parser.h"
#include "core/step_keys.h"

namespace qm {

void AddColumnEditor::Load(const TQMParamParser& block) {
  action = block.GetBool(keys::kToTheEnd) ? AddColumnAction::Append : AddColumnAction::Insert;
  position = block.GetString(keys::kPosition);
  name = block.GetString(keys::kColumnName);
  const int32_t f = block.GetInteger(keys::kFillMode);
  fill = f >= 0 && f < int32_t{kFillItems.size()} ? ColumnFill{f} : ColumnFill::Empty;
  value = block.GetString(keys::kColumnValue);
  pages.Load(block);
}

void AddColumnEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetBool(keys::kToTheEnd, action == AddColumnAction::Append);
  block.SetString(keys::kPosition, position);
  block.SetString(keys::kColumnName, name);
  block.SetInteger(keys::kFillMode, static_cast<int32_t>(fill));
  block.SetString(keys::kColumnValue, value);
  pages.Save(block);
  WriteProducedVariables(block, {});
}

bool AddColumnEditor::IsEnabled(AddColumnControl control) const {
  switch (control) {
    case AddColumnControl::PositionLabel:
    case AddColumnControl::Position: return action == AddColumnAction::Insert;
    case AddColumnControl::ValueLabel:
    case AddColumnControl::Value: return fill == ColumnFill::Static;
    default: return true;
  }
}

}  // namespace qm
