// "CSV Sort by Column": the column, the direction, strings or numbers, and
// case sensitivity, then the source pages.
#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "dialogs/sort_editor.h"
#include "ui/editors.h"
#include "ui/enable_controls.h"
#include "ui/sourced_dialog_win32.h"
#include "ui/text_win32.h"
#include "ui/run_editor_win32.h"

namespace qm::ui {

namespace {

enum : int { kColumn = 10, kDirection, kMode, kCaseSensitive };

class SortDialog final : public SourcedDialog {
 public:
  SortDialog(SortEditor& model, int scale)
      : SourcedDialog(SortEditor::kCaption, L"TCSVsortForm", model.pages, scale), m_(model) {}

 private:
  void BuildGeneral(Box a) override {
    const auto& labels = SortEditor::kLabels;
    Label(Wide(labels[0]).c_str(), Box{a.x, a.y + 3, 170, 18});
    column_ = Edit(Box{a.x + 180, a.y, 100, 23}, kColumn, 0);
    Label(Wide(labels[1]).c_str(), Box{a.x, a.y + 35, 170, 18});
    direction_ = DropList(Box{a.x + 180, a.y + 32, 180, 24}, kDirection, WideItems(SortEditor::kDirectionItems));
    Label(Wide(labels[2]).c_str(), Box{a.x, a.y + 67, 170, 18});
    mode_ = DropList(Box{a.x + 180, a.y + 64, 180, 24}, kMode, WideItems(SortEditor::kModeItems));
    caseSensitive_ = Check(Wide(labels[3]).c_str(), Box{a.x, a.y + 98, 250, 22}, kCaseSensitive);
  }
  void FillGeneral() override {
    SetText(column_, Wide(m_.column));
    SendMessageW(direction_, CB_SETCURSEL, static_cast<WPARAM>(m_.direction), 0);
    SendMessageW(mode_, CB_SETCURSEL, static_cast<WPARAM>(m_.mode), 0);
    SendMessageW(caseSensitive_, BM_SETCHECK, m_.caseSensitive ? BST_CHECKED : BST_UNCHECKED, 0);
    RefreshGeneral();
  }
  void ReadGeneral() override {
    m_.column = Utf16(TextOf(column_));
    m_.direction = SortDirection(SendMessageW(direction_, CB_GETCURSEL, 0, 0));
    m_.mode = SortMode(SendMessageW(mode_, CB_GETCURSEL, 0, 0));
    m_.caseSensitive = SendMessageW(caseSensitive_, BM_GETCHECK, 0, 0) == BST_CHECKED;
  }
  void GeneralCommand(int id, int code) override {
    if (id == kMode && code == CBN_SELCHANGE) RefreshGeneral();
  }
  void SourceChanged() override { RefreshGeneral(); }
  void RefreshGeneral() {
    ReadGeneral();
    EnableControls(caseSensitive_, m_.IsEnabled(SortControl::CaseSensitive));
  }
  bool Confirm() override {
    ReadAll();
    if (const auto failure = m_.Check()) {
      Report<SortControl>(*failure, [this](SortControl c) { return c == SortControl::Column ? column_ : mode_; });
      return false;
    }
    return true;
  }

  SortEditor& m_;
  HWND column_ = nullptr, direction_ = nullptr, mode_ = nullptr, caseSensitive_ = nullptr;
};

}  // namespace

bool ConfigureSortByColumn(TQMPluginParams& params) { return RunEditor<SortDialog>(params, SortEditor()); }

}  // namespace qm::ui
