// "CSV Read Cells" and "CSV Write Cells": the list of cells with its
// commands (buttons, context menu, shortcuts, double-click to edit) and the
// small cell editor they open, then the source pages.
#include <windows.h>
#include <commctrl.h>

#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "dialogs/cells_editor.h"
#include "ui/command_list_win32.h"
#include "ui/editors.h"
#include "ui/sourced_dialog_win32.h"
#include "ui/text_win32.h"
#include "ui/run_editor_win32.h"

namespace qm::ui {

namespace {

enum : int { kAdd = 10, kRow = 20, kColumn, kValue };

// One entry: row, column and the variable name or expression.
class CellItemDialog final : public DialogWindow {
 public:
  static constexpr int kWidth = 360;
  static constexpr int kHeight = 150;

  CellItemDialog(CellItemEditor& model, int scale)
      : DialogWindow(Wide(model.Caption()), L"TCSVcellItemForm", kWidth, kHeight, scale), m_(model) {}

 private:
  void Build() override {
    constexpr int kField = 170;
    Label(Wide(CellItemEditor::kRowLabel).c_str(), Box{10, 15, kField - 16, 18});
    row_ = Edit(Box{kField, 12, kWidth - kField - 10, 23}, kRow);
    Label(Wide(CellItemEditor::kColumnLabel).c_str(), Box{10, 47, kField - 16, 18});
    column_ = Edit(Box{kField, 44, kWidth - kField - 10, 23}, kColumn);
    Label(Wide(m_.ValueLabel()).c_str(), Box{10, 79, kField - 16, 18});
    value_ = Edit(Box{kField, 76, kWidth - kField - 10, 23}, kValue);
    if (!m_.ValueHint().empty()) {
      SendMessageW(value_, EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(Wide(m_.ValueHint()).c_str()));
    }
    AddDialogButtons(true);
  }
  void Fill() override {
    SetText(row_, Wide(m_.entry.row));
    SetText(column_, Wide(m_.entry.column));
    SetText(value_, Wide(m_.entry.value));
  }
  bool Confirm() override {
    m_.entry = CellEntry{Utf16(TextOf(row_)), Utf16(TextOf(column_)), Utf16(TextOf(value_))};
    if (const auto failure = m_.Check()) {
      HWND control = failure->control == CellItemControl::Row      ? row_
                     : failure->control == CellItemControl::Column ? column_
                                                                   : value_;
      ReportFailure(control, Wide(failure->message), failure->beep);
      return false;
    }
    return true;
  }

  CellItemEditor& m_;
  HWND row_ = nullptr, column_ = nullptr, value_ = nullptr;
};

class CellsDialog final : public SourcedDialog {
 public:
  CellsDialog(CellsEditor& model, int scale)
      : SourcedDialog(model.Caption(), L"TCSVcellsForm", model.pages, scale), m_(model) {
    SetHelpContext(static_cast<DWORD>(model.HelpTopic()));
  }

 private:
  void BuildGeneral(Box a) override {
    Label(Wide(CellsEditor::kListLabel).c_str(), Box{a.x, a.y, a.w - CommandList::kButtonWidth - 8, 18});
    const auto headings = m_.ColumnHeadings();
    constexpr int kWidths[] = {70, 70};
    list_.Build(*this, Box{a.x, a.y + 20, a.w, a.h - 20}, kAdd, headings, kWidths, CellsEditor::kCommandCaptions,
                CellsEditor::kCommandCaptions);
  }
  void FillGeneral() override { list_.SetRows(Rows(), -1); }
  // The list holds the model's entries; the list view is read only by selection.
  void ReadGeneral() override {}
  std::vector<HWND> RememberedLists() const override { return {list_.List()}; }

  CommandList::Rows Rows() const {
    CommandList::Rows rows;
    for (const CellEntry& cell : m_.cells) rows.push_back({cell.row, cell.column, cell.value});
    return rows;
  }
  void Run(ListCommand command) {
    RunListCommand(
        command, m_, list_, [this](CellItemEditor& item) { return CellItemDialog(item, Scale()).RunModal(Handle()); },
        [this] { return Rows(); });
  }

  void GeneralCommand(int id, int code) override {
    if (const auto command = list_.CommandOf(id, code)) Run(*command);
  }
  LRESULT Notify(const NMHDR& header) override {
    if (const auto command = list_.NotifyCommand(header)) Run(*command);
    return 0;
  }
  void ContextMenu(HWND control, POINT at) override {
    if (const auto command = list_.MenuCommand(control, at)) Run(*command);
  }

  bool Confirm() override {
    ReadAll();
    if (const auto failure = m_.Check()) {
      Report<CellsControl>(*failure, [this](CellsControl) { return list_.List(); });
      return false;
    }
    return true;
  }

  CellsEditor& m_;
  CommandList list_;
};

bool ConfigureCells(TQMPluginParams& params, bool writeMode) {
  return RunEditor<CellsDialog>(params, CellsEditor(writeMode));
}

}  // namespace

bool ConfigureReadCells(TQMPluginParams& params) { return ConfigureCells(params, false); }
bool ConfigureWriteCells(TQMPluginParams& params) { return ConfigureCells(params, true); }

}  // namespace qm::ui
