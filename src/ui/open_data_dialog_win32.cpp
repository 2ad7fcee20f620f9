// "CSV Open Data": the source frame in open mode (a file or a text) on "CSV
// data", the format frame on "Source format"; no fields of its own.
#include <type_traits>
#include <variant>

#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "dialogs/open_data_editor.h"
#include "ui/dialog_window_win32.h"
#include "ui/editors.h"
#include "ui/frame_view_win32.h"
#include "ui/text_win32.h"
#include "ui/run_editor_win32.h"

namespace qm::ui {

namespace {

constexpr int kWidth = 500;
constexpr int kHeight = 420;

class OpenDataDialog final : public DialogWindow {
 public:
  OpenDataDialog(OpenDataEditor& model, int scale)
      : DialogWindow(Wide(OpenDataEditor::kCaption), L"TCSVopenForm", kWidth, kHeight, scale), m_(model) {}

 private:
  void Build() override {
    AddTabs(Box{8, 8, kWidth - 16, kHeight - 56});
    BeginPage(Wide(OpenDataEditor::kPageCaptions[0]).c_str());
    source_.Build(*this, PageArea(), m_.source);
    BeginPage(Wide(OpenDataEditor::kPageCaptions[1]).c_str());
    format_.Build(*this, PageArea());
    AddDialogButtons(true);
  }
  void Fill() override {
    source_.Fill(m_.source);
    format_.Fill(m_.format);
  }
  void Command(int id, int code, HWND) override {
    bool sourceChanged = false;
    if (!source_.Command(m_.source, id, code, sourceChanged)) format_.Command(m_.format, id, code);
  }
  bool Confirm() override {
    source_.Read(m_.source);
    format_.Read(m_.format);
    const auto failure = m_.Check();
    if (!failure) return true;
    HWND control = std::visit(
        [this](auto c) -> HWND {
          if constexpr (std::is_same_v<decltype(c), SourceControl>)
            return source_.Control(c);
          else
            return format_.Control(c);
        },
        failure->control);
    ReportFailure(control, Wide(failure->message), failure->beep);
    return false;
  }

  OpenDataEditor& m_;
  SourceFrameView source_;
  FormatFrameView format_;
};

}  // namespace

bool ConfigureOpenData(TQMPluginParams& params) { return RunEditor<OpenDataDialog>(params, OpenDataEditor()); }

}  // namespace qm::ui
