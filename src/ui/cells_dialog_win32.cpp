// "CSV Read Cells" and "CSV Write Cells": the list of cells with its
// commands (buttons, context menu, double-click to edit) and the small cell
// editor they open, then the source pages.
#include <windows.h>
#include <commctrl.h>

#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "dialogs/cells_editor.h"
#include "ui/editors.h"
#include "ui/sourced_dialog_win32.h"
#include "ui/text_win32.h"
#include "ui/run_editor_win32.h"

namespace qm::ui {

namespace {

enum : int { kList = 10, kAdd, kEdit, kRemove, kRow, kColumn, kValue };

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
      HWND control = failure->control == CellItemControl::Row ? row_ : failure->control == CellItemControl::Column ? column_ : value_;
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
      : SourcedDialog(model.Caption(), L"TCSVcellsForm", model.pages, scale), m_(model) {}

 private:
  void BuildGeneral(Box a) override {
    constexpr int kButtonWidth = 90;
    const int listWidth = a.w - kButtonWidth - 8;
    Label(Wide(CellsEditor::kListLabel).c_str(), Box{a.x, a.y, listWidth, 18});
    list_ = Add(WC_LISTVIEWW, L"", WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
                Box{a.x, a.y + 20, listWidth, a.h - 20}, kList, kStretchRight | kStretchDown, WS_EX_CLIENTEDGE);
    ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
    const auto headings = m_.ColumnHeadings();
    const int widths[3] = {70, 70, listWidth - 70 - 70 - 24};
    for (int c = 0; c < 3; ++c) {
      std::wstring heading = Wide(headings[static_cast<size_t>(c)]);
      LVCOLUMNW column{};
      column.mask = LVCF_TEXT | LVCF_WIDTH;
      column.cx = Px(widths[c]);
      column.pszText = heading.data();
      SendMessageW(list_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(c), reinterpret_cast<LPARAM>(&column));
    }
    const auto& captions = CellsEditor::kCommandCaptions;
    for (int i = 0; i < 3; ++i) {
      commands_[i] = Button(Wide(captions[static_cast<size_t>(i)]).c_str(),
                            Box{a.x + a.w - kButtonWidth, a.y + 20 + i * 32, kButtonWidth, 25}, kAdd + i, kFollowRight);
    }
  }
  void FillGeneral() override { FillList(-1); }
  // The list holds the model's entries; the list view is read only by selection.
  void ReadGeneral() override {}
  std::vector<HWND> RememberedLists() const override { return {list_}; }

  void FillList(int select) {
    ListView_DeleteAllItems(list_);
    for (size_t i = 0; i < m_.cells.size(); ++i) {
      const CellEntry& cell = m_.cells[i];
      std::wstring texts[3] = {Wide(cell.row), Wide(cell.column), Wide(cell.value)};
      LVITEMW item{};
      item.mask = LVIF_TEXT;
      item.iItem = static_cast<int>(i);
      item.pszText = texts[0].data();
      SendMessageW(list_, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
      for (int c = 1; c < 3; ++c) {
        item.iSubItem = c;
        item.pszText = texts[c].data();
        SendMessageW(list_, LVM_SETITEMTEXTW, i, reinterpret_cast<LPARAM>(&item));
      }
    }
    if (select >= 0 && select < static_cast<int>(m_.cells.size())) {
      ListView_SetItemState(list_, select, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
      ListView_EnsureVisible(list_, select, FALSE);
    }
  }
  int Selected() const { return ListView_GetNextItem(list_, -1, LVNI_SELECTED); }

  void Run(ListCommand command) {
    const int selected = Selected();
    if (const auto beep = m_.Refusal(command, selected)) {
      Sound(*beep);
      return;
    }
    switch (command) {
      case ListCommand::Add: {
        CellItemEditor item = m_.BeginAdd();
        if (!CellItemDialog(item, Scale()).RunModal(Handle())) return;
        m_.FinishAdd(item);
        FillList(static_cast<int>(m_.cells.size()) - 1);
        break;
      }
      case ListCommand::Edit: {
        auto item = m_.BeginEdit(selected);
        if (!item || !CellItemDialog(*item, Scale()).RunModal(Handle())) return;
        m_.FinishEdit(selected, *item);
        FillList(selected);
        break;
      }
      case ListCommand::Remove:
        // The entry now in the removed one's place stays selected, else the last.
        if (m_.Remove(selected)) {
          const int last = static_cast<int>(m_.cells.size()) - 1;
          FillList(selected <= last ? selected : last);
        }
        break;
    }
    SetFocus(list_);
  }

  void GeneralCommand(int id, int code) override {
    if (code == BN_CLICKED && id >= kAdd && id <= kRemove) Run(ListCommand(id - kAdd));
  }
  LRESULT Notify(const NMHDR& header) override {
    if (header.hwndFrom == list_ && header.code == NM_DBLCLK) {
      // A double-click on an entry edits it; on the empty area it does nothing.
      if (reinterpret_cast<const NMITEMACTIVATE&>(header).iItem >= 0) Run(ListCommand::Edit);
    }
    return 0;
  }
  void ContextMenu(HWND control, POINT at) override {
    if (control != list_) return;
    if (at.x == -1 && at.y == -1) {
      RECT r{};
      GetWindowRect(list_, &r);
      at = POINT{r.left + Px(10), r.top + Px(30)};
    }
    HMENU menu = CreatePopupMenu();
    const auto& captions = CellsEditor::kCommandCaptions;
    for (int i = 0; i < 3; ++i) {
      AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(kAdd + i), Wide(captions[static_cast<size_t>(i)]).c_str());
    }
    const int chosen = TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, 0, Handle(), nullptr);
    DestroyMenu(menu);
    if (chosen >= kAdd && chosen <= kRemove) Run(ListCommand(chosen - kAdd));
  }

  bool Confirm() override {
    ReadAll();
    if (const auto failure = m_.Check()) {
      Report<CellsControl>(*failure, [this](CellsControl) { return list_; });
      return false;
    }
    return true;
  }

  CellsEditor& m_;
  HWND list_ = nullptr;
  HWND commands_[3] = {};
};

bool ConfigureCells(TQMPluginParams& params, bool writeMode) {
  return RunEditor<CellsDialog>(params, CellsEditor(writeMode));
}

}  // namespace

bool ConfigureReadCells(TQMPluginParams& params) { return ConfigureCells(params, false); }
bool ConfigureWriteCells(TQMPluginParams& params) { return ConfigureCells(params, true); }

}  // namespace qm::ui
