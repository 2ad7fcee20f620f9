// "CSV Data Loop": the variables that receive each visited row's number and
// content, the content's format and the conditions, then the source pages.
#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "dialogs/data_loop_editor.h"
#include "ui/condition_list_view_win32.h"
#include "ui/editors.h"
#include "ui/run_editor_win32.h"
#include "ui/text_win32.h"

namespace qm::ui {

namespace {

enum : int { kRowNumber = 10, kRow, kFormat, kConditions };

class DataLoopDialog final : public ConditionsDialog {
 public:
  DataLoopDialog(DataLoopEditor& model, int scale)
      : ConditionsDialog(DataLoopEditor::kCaption, L"TCSVDataLoopForm", model.pages, model.conditions, scale),
        m_(model) {}

 private:
  void BuildGeneral(Box a) override {
    constexpr int kField = 200;
    Label(Wide(DataLoopEditor::kRowNumberLabel).c_str(), Box{a.x, a.y + 3, kField - 8, 18});
    rowNumber_ = Edit(Box{a.x + kField, a.y, a.w - kField, 23}, kRowNumber);
    Label(Wide(DataLoopEditor::kRowLabel).c_str(), Box{a.x, a.y + 35, kField - 8, 18});
    row_ = Edit(Box{a.x + kField, a.y + 32, a.w - kField, 23}, kRow);
    Label(Wide(DataLoopEditor::kFormatLabel).c_str(), Box{a.x, a.y + 67, kField - 8, 18});
    format_ = DropList(Box{a.x + kField, a.y + 64, a.w - kField, 24}, kFormat, WideItems(DataLoopEditor::kFormatItems),
                       kStretchRight);
    conditions_.Build(*this, Box{a.x, a.y + 100, a.w, a.h - 100}, kConditions, DataLoopEditor::kFilterGroup,
                      DataLoopEditor::kCommandCaptions);
  }
  void FillGeneral() override {
    SetText(rowNumber_, Wide(m_.rowNumberVar));
    SetText(row_, Wide(m_.rowVar));
    SendMessageW(format_, CB_SETCURSEL, m_.jsonFormat ? 1 : 0, 0);
    conditions_.Fill(m_.conditions);
  }
  void ReadGeneral() override {
    m_.rowNumberVar = Utf16(TextOf(rowNumber_));
    m_.rowVar = Utf16(TextOf(row_));
    m_.jsonFormat = SendMessageW(format_, CB_GETCURSEL, 0, 0) == 1;
    conditions_.Read(m_.conditions);
  }
  bool Confirm() override {
    ReadAll();
    if (const auto failure = m_.Check()) {
      Report<DataLoopControl>(*failure, [this](DataLoopControl) { return rowNumber_; });
      return false;
    }
    return true;
  }

  DataLoopEditor& m_;
  HWND rowNumber_ = nullptr, row_ = nullptr, format_ = nullptr;
};

}  // namespace

bool ConfigureDataLoop(TQMPluginParams& params) { return RunEditor<DataLoopDialog>(params, DataLoopEditor()); }

}  // namespace qm::ui
