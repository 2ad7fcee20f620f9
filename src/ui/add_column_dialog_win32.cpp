// "CSV Add Column": append or insert, the name, and how the new column is
// filled, then the source pages.
#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "dialogs/add_column_editor.h"
#include "ui/editors.h"
#include "ui/enable_controls.h"
#include "ui/sourced_dialog_win32.h"
#include "ui/text_win32.h"
#include "ui/run_editor_win32.h"

namespace qm::ui {

namespace {

enum : int { kAction = 10, kPosition, kName, kFill, kValue };

class AddColumnDialog final : public SourcedDialog {
 public:
  AddColumnDialog(AddColumnEditor& model, int scale)
      : SourcedDialog(AddColumnEditor::kCaption, L"TCSVaddColumnForm", model.pages, scale), m_(model) {}

 private:
  void BuildGeneral(Box a) override {
    const auto& labels = AddColumnEditor::kLabels;
    Label(Wide(labels[0]).c_str(), Box{a.x, a.y + 3, 150, 18});
    action_ = DropList(Box{a.x + 160, a.y, 180, 24}, kAction, WideItems(AddColumnEditor::kActionItems));
    positionLabel_ = Label(Wide(labels[1]).c_str(), Box{a.x, a.y + 35, 150, 18});
    position_ = Edit(Box{a.x + 160, a.y + 32, 100, 23}, kPosition, 0);
    SetLabelFor(positionLabel_, position_);
    Label(Wide(labels[2]).c_str(), Box{a.x, a.y + 67, 150, 18});
    name_ = Edit(Box{a.x + 160, a.y + 64, a.w - 160, 23}, kName);
    Label(Wide(labels[3]).c_str(), Box{a.x, a.y + 99, 150, 18});
    fill_ = DropList(Box{a.x + 160, a.y + 96, 180, 24}, kFill, WideItems(AddColumnEditor::kFillItems));
    valueLabel_ = Label(Wide(labels[4]).c_str(), Box{a.x, a.y + 131, 150, 18});
    value_ = Edit(Box{a.x + 160, a.y + 128, a.w - 160, 23}, kValue);
    SetLabelFor(valueLabel_, value_);
  }
  void FillGeneral() override {
    SendMessageW(action_, CB_SETCURSEL, static_cast<WPARAM>(m_.action), 0);
    SetText(position_, Wide(m_.position));
    SetText(name_, Wide(m_.name));
    SendMessageW(fill_, CB_SETCURSEL, static_cast<WPARAM>(m_.fill), 0);
    SetText(value_, Wide(m_.value));
    RefreshGeneral();
  }
  void ReadGeneral() override {
    m_.action = AddColumnAction(SendMessageW(action_, CB_GETCURSEL, 0, 0));
    m_.position = Utf16(TextOf(position_));
    m_.name = Utf16(TextOf(name_));
    m_.fill = ColumnFill(SendMessageW(fill_, CB_GETCURSEL, 0, 0));
    m_.value = Utf16(TextOf(value_));
  }
  // The position follows the action, the value the fill mode.
  void GeneralCommand(int id, int code) override {
    if ((id == kAction || id == kFill) && code == CBN_SELCHANGE) RefreshGeneral();
  }
  void RefreshGeneral() {
    ReadGeneral();
    EnableControls(positionLabel_, m_.IsEnabled(AddColumnControl::Position));
    EnableControls(valueLabel_, m_.IsEnabled(AddColumnControl::Value));
  }
  bool Confirm() override {
    ReadAll();
    if (const auto failure = m_.Check()) {
      Report<AddColumnControl>(*failure, [this](AddColumnControl) { return name_; });
      return false;
    }
    return true;
  }

  AddColumnEditor& m_;
  HWND positionLabel_ = nullptr, valueLabel_ = nullptr;
  HWND action_ = nullptr, position_ = nullptr, name_ = nullptr, fill_ = nullptr, value_ = nullptr;
};

}  // namespace

bool ConfigureAddColumn(TQMPluginParams& params) { return RunEditor<AddColumnDialog>(params, AddColumnEditor()); }

}  // namespace qm::ui
