#include "dialogs/cells_editor.h"

#include "boundary/param_parser.h"
#include "core/convert.h"
#include "core/messages.h"

namespace qm {
namespace {

std::u16string Key(std::u16string_view name, size_t index) {
  return std::u16string(name) + IntToStr(static_cast<int64_t>(index));
}

}  // namespace

void CellsEditor::Load(const TQMParamParser& block) {
  cells.clear();
  const int32_t count = block.GetIntegerDef(u"cellcount", 0);
  for (int32_t i = 0; i < count; ++i) {
    const auto n = static_cast<size_t>(i);
    cells.push_back({block.GetStringDef(Key(u"row", n), u"0"), block.GetStringDef(Key(u"col", n), u"0"),
                     block.GetString(Key(u"val", n))});
  }
  pages.Load(block);
}

void CellsEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetInteger(u"cellcount", static_cast<int32_t>(cells.size()));
  for (size_t i = 0; i < cells.size(); ++i) {
    block.SetString(Key(u"row", i), cells[i].row);
    block.SetString(Key(u"col", i), cells[i].column);
    block.SetString(Key(u"val", i), cells[i].value);
  }
  pages.Save(block);
  WriteProducedVariables(block, ProducedVariables());
}

CheckResult<CellsEditor::Control> CellsEditor::Check() const {
  if (cells.empty()) return Fail(Control{CellsControl::List}, msg::kListEmpty);
  return pages.Check<Control>();
}

std::vector<std::u16string_view> CellsEditor::ProducedVariables() const {
  std::vector<std::u16string_view> names;
  if (!writeMode_) {
    for (const auto& cell : cells) names.push_back(cell.value);
  }
  return names;
}

std::optional<CellItemEditor> CellsEditor::BeginEdit(int32_t selected) const {
  if (!IsSelected(selected)) return std::nullopt;
  return CellItemEditor(false, writeMode_, cells[static_cast<size_t>(selected)]);
}

void CellsEditor::FinishEdit(int32_t selected, const CellItemEditor& editor) {
  if (IsSelected(selected)) cells[static_cast<size_t>(selected)] = editor.entry;
}

bool CellsEditor::Remove(int32_t selected) {
  if (!IsSelected(selected)) return false;
  cells.erase(cells.begin() + selected);
  return true;
}

}  // namespace qm
