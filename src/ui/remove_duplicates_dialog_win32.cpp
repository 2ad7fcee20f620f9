// "CSV Remove Duplicates": case sensitivity and the variable that receives
// the number of deleted rows, then the source pages.
#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "dialogs/remove_duplicates_editor.h"
#include "ui/editors.h"
#include "ui/sourced_dialog_win32.h"
#include "ui/text_win32.h"
#include "ui/run_editor_win32.h"

namespace qm::ui {

namespace {

enum : int { kCaseSensitive = 10, kVariable };

class RemoveDuplicatesDialog final : public SourcedDialog {
 public:
  RemoveDuplicatesDialog(RemoveDuplicatesEditor& model, int scale)
      : SourcedDialog(RemoveDuplicatesEditor::kCaption, L"TCSVremoveDuplicatesForm", model.pages, scale), m_(model) {}

 private:
  void BuildGeneral(Box a) override {
    caseSensitive_ =
        Check(Wide(RemoveDuplicatesEditor::kCaseSensitive).c_str(), Box{a.x, a.y, 250, 22}, kCaseSensitive);
    Label(Wide(RemoveDuplicatesEditor::kVariableLabel).c_str(), Box{a.x, a.y + 34, a.w, 18});
    variable_ = Edit(Box{a.x, a.y + 54, 250, 23}, kVariable, 0);
  }
  void FillGeneral() override {
    SendMessageW(caseSensitive_, BM_SETCHECK, m_.caseSensitive ? BST_CHECKED : BST_UNCHECKED, 0);
    SetText(variable_, Wide(m_.variable));
  }
  void ReadGeneral() override {
    m_.caseSensitive = SendMessageW(caseSensitive_, BM_GETCHECK, 0, 0) == BST_CHECKED;
    m_.variable = Utf16(TextOf(variable_));
  }
  bool Confirm() override {
    ReadAll();
    if (const auto failure = m_.Check()) {
      Report<RemoveDuplicatesControl>(*failure, [this](RemoveDuplicatesControl) { return variable_; });
      return false;
    }
    return true;
  }

  RemoveDuplicatesEditor& m_;
  HWND caseSensitive_ = nullptr, variable_ = nullptr;
};

}  // namespace

bool ConfigureRemoveDuplicates(TQMPluginParams& params) {
  return RunEditor<RemoveDuplicatesDialog>(params, RemoveDuplicatesEditor());
}

}  // namespace qm::ui
