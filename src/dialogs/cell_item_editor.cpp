#include "dialogs/cell_item_editor.h"

#include <utility>

namespace qm {

CellItemEditor::CellItemEditor(bool addMode, bool writeMode, CellEntry e)
    : entry(addMode ? CellEntry{} : std::move(e)), addMode_(addMode), writeMode_(writeMode) {}

CheckResult<CellItemControl> CellItemEditor::Check() const {
  if (IsBlank(entry.row)) return Fail(CellItemControl::Row, u"", Beep::Default);
  if (IsBlank(entry.column)) return Fail(CellItemControl::Column, u"", Beep::Default);
  return std::nullopt;
}

}  // namespace qm
