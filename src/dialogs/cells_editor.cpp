#include "dialogs/cells_editor.h"

#include "boundary/param_parser.h"
#include "core/messages.h"
#include "core/step_keys.h"

namespace qm {

void CellsEditor::Load(const TQMParamParser& block) {
  cells.clear();
  const int32_t count = block.GetInteger(keys::kCellCount);
  for (int32_t i = 0; i < count; ++i) {
    cells.push_back({block.GetString(keys::kRow, i), block.GetString(keys::kCol, i), block.GetString(keys::kVal, i)});
  }
  pages.Load(block);
}

void CellsEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetInteger(keys::kCellCount, static_cast<int32_t>(cells.size()));
  for (size_t i = 0; i < cells.size(); ++i) {
    const auto n = static_cast<int32_t>(i);
    block.SetString(keys::kRow, n, cells[i].row);
    block.SetString(keys::kCol, n, cells[i].column);
    block.SetString(keys::kVal, n, cells[i].value);
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
