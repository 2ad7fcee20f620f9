// "CSV Remove Columns": the numbers of the columns to remove, then the source
// pages.
#include <windows.h>
#include <commctrl.h>

#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "dialogs/remove_columns_editor.h"
#include "ui/editors.h"
#include "ui/sourced_dialog_win32.h"
#include "ui/text_win32.h"
#include "ui/run_editor_win32.h"

namespace qm::ui {

namespace {

enum : int { kColumns = 10 };

class RemoveColumnsDialog final : public SourcedDialog {
 public:
  RemoveColumnsDialog(RemoveColumnsEditor& model, int scale)
      : SourcedDialog(RemoveColumnsEditor::kCaption, L"TCSVremoveColumnsForm", model.pages, scale), m_(model) {}

 private:
  void BuildGeneral(Box a) override {
    Label(Wide(RemoveColumnsEditor::kColumnsLabel).c_str(), Box{a.x, a.y, a.w, 18});
    columns_ = Edit(Box{a.x, a.y + 20, a.w, 23}, kColumns);
    SendMessageW(columns_, EM_SETCUEBANNER, TRUE,
                 reinterpret_cast<LPARAM>(Wide(RemoveColumnsEditor::kColumnsHint).c_str()));
  }
  void FillGeneral() override { SetText(columns_, Wide(m_.columns)); }
  void ReadGeneral() override { m_.columns = Utf16(TextOf(columns_)); }
  bool Confirm() override {
    ReadAll();
    if (const auto failure = m_.Check()) {
      Report<RemoveColumnsControl>(*failure, [this](RemoveColumnsControl) { return columns_; });
      return false;
    }
    return true;
  }

  RemoveColumnsEditor& m_;
  HWND columns_ = nullptr;
};

}  // namespace

bool ConfigureRemoveColumns(TQMPluginParams& params) {
  return RunEditor<RemoveColumnsDialog>(params, RemoveColumnsEditor());
}

}  // namespace qm::ui
