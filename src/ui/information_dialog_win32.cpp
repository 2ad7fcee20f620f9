// "CSV Get Data Information": the variables that receive the record and
// column counts, then the source pages.
#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "dialogs/information_editor.h"
#include "ui/editors.h"
#include "ui/sourced_dialog_win32.h"
#include "ui/text_win32.h"
#include "ui/run_editor_win32.h"

namespace qm::ui {

namespace {

enum : int { kRecordCount = 10, kColumnCount };

class InformationDialog final : public SourcedDialog {
 public:
  InformationDialog(InformationEditor& model, int scale)
      : SourcedDialog(InformationEditor::kCaption, L"TCSVinfoForm", model.pages, scale), m_(model) {}

 private:
  void BuildGeneral(Box a) override {
    Label(Wide(InformationEditor::kRecordCountLabel).c_str(), Box{a.x, a.y, a.w, 18});
    records_ = Edit(Box{a.x, a.y + 20, 250, 23}, kRecordCount, 0);
    Label(Wide(InformationEditor::kColumnCountLabel).c_str(), Box{a.x, a.y + 56, a.w, 18});
    columns_ = Edit(Box{a.x, a.y + 76, 250, 23}, kColumnCount, 0);
  }
  void FillGeneral() override {
    SetText(records_, Wide(m_.recordCountVar));
    SetText(columns_, Wide(m_.columnCountVar));
  }
  void ReadGeneral() override {
    m_.recordCountVar = Utf16(TextOf(records_));
    m_.columnCountVar = Utf16(TextOf(columns_));
  }
  bool Confirm() override {
    ReadAll();
    if (const auto failure = m_.Check()) {
      Report<InformationControl>(*failure, [this](InformationControl) { return records_; });
      return false;
    }
    return true;
  }

  InformationEditor& m_;
  HWND records_ = nullptr, columns_ = nullptr;
};

}  // namespace

bool ConfigureGetDataInformation(TQMPluginParams& params) {
  return RunEditor<InformationDialog>(params, InformationEditor());
}

}  // namespace qm::ui
