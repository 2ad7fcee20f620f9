// The "CSV Read Cells" / "CSV Write Cells" dialog: the list of cell entries
// with its commands, and the table's source.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "dialogs/cell_item_editor.h"
#include "dialogs/list_commands.h"
#include "dialogs/table_source_pages.h"

namespace qm {

enum class CellsControl : uint8_t { ListLabel, List, Add, Edit, Remove };

class CellsEditor {
 public:
  static constexpr std::u16string_view kListLabel = u"Cells list:";
  static constexpr std::array<std::u16string_view, 3> kCommandCaptions = {u"Add...", u"Edit...", u"Remove"};
  static constexpr int32_t kWriteHelpTopic = 5090;
  using Control = SourcedControl<CellsControl>;
  static int32_t PageOf(const Control& control) { return SourcedPage(control); }

  explicit CellsEditor(bool writeMode) : writeMode_(writeMode) {}

  std::u16string_view Caption() const { return writeMode_ ? u"CSV Write Cells" : u"CSV Read Cells"; }
  // The list's column headings.
  std::array<std::u16string_view, 3> ColumnHeadings() const {
    return {u"Row", u"Column", writeMode_ ? u"Cell value" : u"Variable name"};
  }
  bool WriteMode() const { return writeMode_; }
  // The dialog's help topic: Write Cells has one, Read Cells none (0).
  int32_t HelpTopic() const { return writeMode_ ? kWriteHelpTopic : 0; }

  // `cellcount` entries (`rowN`, `colN` default "0", `valN` default empty),
  // then the source and format keys.
  void Load(const TQMParamParser& block);
  // Clears the block and writes `cellcount`, each entry's `rowN`, `colN`,
  // `valN`, the source and format keys and, reading, the produced variables.
  void Save(TQMParamParser& block) const;
  // An empty list first, then the pages.
  CheckResult<Control> Check() const;
  // Reading: every entry's variable name, in list order. Writing: none.
  std::vector<std::u16string_view> ProducedVariables() const;

  // The list commands; `selected` is the selected row or -1. Edit and Remove
  // without a selected row do nothing but sound this beep.
  std::optional<Beep> Refusal(ListCommand command, int32_t selected) const {
    return ListRefusal(command, selected, cells.size());
  }
  // "Add...": the cell editor in add mode; its OK appends the entry.
  CellItemEditor BeginAdd() const { return CellItemEditor(true, writeMode_); }
  void FinishAdd(const CellItemEditor& editor) { cells.push_back(editor.entry); }
  // "Edit...": the cell editor on the selected entry; its OK replaces it.
  std::optional<CellItemEditor> BeginEdit(int32_t selected) const;
  void FinishEdit(int32_t selected, const CellItemEditor& editor);
  // "Remove": deletes the selected entry without asking; false when none is.
  bool Remove(int32_t selected);

  std::vector<CellEntry> cells;
  TableSourcePages pages;

 private:
  bool IsSelected(int32_t row) const { return row >= 0 && row < static_cast<int32_t>(cells.size()); }
  bool writeMode_;
};

}  // namespace qm
