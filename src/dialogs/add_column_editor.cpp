#include "dialogs/add_column_editor.h"

#include "boundary/param_parser.h"

namespace qm {

void AddColumnEditor::Load(const TQMParamParser& block) {
  action = block.GetBoolDef(u"totheend", true) ? AddColumnAction::Append : AddColumnAction::Insert;
  position = block.GetString(u"position");
  name = block.GetStringDef(u"columnname", kDefaultName);
  const int32_t f = block.GetIntegerDef(u"fillmode", 0);
  fill = f >= 0 && f < int32_t{kFillItems.size()} ? ColumnFill{f} : ColumnFill::Empty;
  value = block.GetString(u"columnvalue");
  pages.Load(block);
}

void AddColumnEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetBool(u"totheend", action == AddColumnAction::Append);
  block.SetString(u"position", position);
  block.SetString(u"columnname", name);
  block.SetInteger(u"fillmode", static_cast<int32_t>(fill));
  block.SetString(u"columnvalue", value);
  pages.Save(block);
  WriteProducedVariables(block, {});
}

bool AddColumnEditor::IsEnabled(AddColumnControl control) const {
  switch (control) {
    case AddColumnControl::PositionLabel:
    case AddColumnControl::Position:
      return action == AddColumnAction::Insert;
    case AddColumnControl::ValueLabel:
    case AddColumnControl::Value:
      return fill == ColumnFill::Static;
    default:
      return true;
  }
}

}  // namespace qm
