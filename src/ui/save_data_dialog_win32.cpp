// "CSV Save Data": the target frame on "General" and, unless the table keeps
// its own format, the output format on "CSV Format".
#include <type_traits>
#include <variant>

#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "dialogs/save_data_editor.h"
#include "ui/dialog_window_win32.h"
#include "ui/editors.h"
#include "ui/frame_view_win32.h"
#include "ui/text_win32.h"
#include "ui/run_editor_win32.h"

namespace qm::ui {

namespace {

constexpr int kWidth = 500;
constexpr int kHeight = 340;

class SaveDataDialog final : public DialogWindow {
 public:
  SaveDataDialog(SaveDataEditor& model, int scale)
      : DialogWindow(Wide(SaveDataEditor::kCaption), L"TCSVsaveForm", kWidth, kHeight, scale), m_(model) {}

 private:
  void Build() override {
    AddTabs(Box{8, 8, kWidth - 16, kHeight - 56});
    BeginPage(Wide(SaveDataEditor::kPageCaptions[0]).c_str());
    target_.Build(*this, PageArea());
    BeginPage(Wide(SaveDataEditor::kPageCaptions[1]).c_str());
    format_.Build(*this, PageArea());
    AddDialogButtons(true);
  }
  void Fill() override {
    target_.Fill(m_.target);
    format_.Fill(m_.format);
    SetPageVisible(1, m_.FormatPageVisible());
  }
  void Command(int id, int code, HWND) override {
    bool formatChanged = false;
    if (target_.Command(m_.target, id, code, formatChanged)) {
      if (formatChanged) SetPageVisible(1, m_.FormatPageVisible());
      return;
    }
    format_.Command(m_.format, id, code);
  }
  bool Confirm() override {
    target_.Read(m_.target);
    format_.Read(m_.format);
    const auto failure = m_.Check();
    if (!failure) return true;
    HWND control = std::visit(
        [this](auto c) -> HWND {
          if constexpr (std::is_same_v<decltype(c), TargetControl>)
            return target_.Control(c);
          else
            return format_.Control(c);
        },
        failure->control);
    ReportFailure(control, Wide(failure->message), failure->beep);
    return false;
  }

  SaveDataEditor& m_;
  TargetFrameView target_;
  FormatFrameView format_;
};

}  // namespace

bool ConfigureSaveData(TQMPluginParams& params) { return RunEditor<SaveDataDialog>(params, SaveDataEditor()); }

}  // namespace qm::ui
