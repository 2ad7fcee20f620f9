// "CSV Merge Data": the note and the source frame in open mode on "Data to
// add", the format frame on "Data Format", what to do with a different number
// of columns on "Advanced".
#include <array>
#include <type_traits>
#include <variant>

#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "dialogs/merge_editor.h"
#include "ui/dialog_window_win32.h"
#include "ui/editors.h"
#include "ui/frame_view_win32.h"
#include "ui/text_win32.h"
#include "ui/run_editor_win32.h"

namespace qm::ui {

namespace {

constexpr int kWidth = 500;
constexpr int kHeight = 450;
enum : int { kRaiseError = 10, kAdjustColumns };

class MergeDialog final : public DialogWindow {
 public:
  MergeDialog(MergeEditor& model, int scale)
      : DialogWindow(Wide(MergeEditor::kCaption), L"TCSVmergeForm", kWidth, kHeight, scale), m_(model) {
    SetHelpContext(MergeEditor::kHelpContext);
  }

 private:
  void Build() override {
    const auto& pages = MergeEditor::kPageCaptions;
    AddTabs(Box{8, 8, kWidth - 16, kHeight - 56});
    BeginPage(Wide(pages[0]).c_str());
    Box a = PageArea();
    note_ = Label(Wide(MergeEditor::kNote).c_str(), Box{a.x, a.y, a.w, 18}, kStretchRight);
    source_.Build(*this, Box{a.x, a.y + 28, a.w, a.h - 28}, m_.source);
    BeginPage(Wide(pages[1]).c_str());
    format_.Build(*this, PageArea());
    BeginPage(Wide(pages[2]).c_str());
    a = PageArea();
    mismatch_ = Group(Wide(MergeEditor::kMismatchCaption).c_str(), Box{a.x, a.y, a.w, 78});
    const auto& items = MergeEditor::kMismatchItems;
    radios_[0] = Radio(Wide(items[0]).c_str(), Box{a.x + 10, a.y + 22, a.w - 20, 20}, kRaiseError, true);
    radios_[1] = Radio(Wide(items[1]).c_str(), Box{a.x + 10, a.y + 48, a.w - 20, 20}, kAdjustColumns, false);
    AddDialogButtons(true);
  }
  void Fill() override {
    source_.Fill(m_.source);
    format_.Fill(m_.format);
    const bool adjust = m_.mismatch == ColumnMismatch::AdjustColumns;
    SendMessageW(radios_[0], BM_SETCHECK, adjust ? BST_UNCHECKED : BST_CHECKED, 0);
    SendMessageW(radios_[1], BM_SETCHECK, adjust ? BST_CHECKED : BST_UNCHECKED, 0);
  }
  void Command(int id, int code, HWND) override {
    bool sourceChanged = false;
    if (!source_.Command(m_.source, id, code, sourceChanged)) format_.Command(m_.format, id, code);
  }
  bool Confirm() override {
    source_.Read(m_.source);
    format_.Read(m_.format);
    m_.mismatch = SendMessageW(radios_[1], BM_GETCHECK, 0, 0) == BST_CHECKED ? ColumnMismatch::AdjustColumns
                                                                             : ColumnMismatch::RaiseError;
    const auto failure = m_.Check();
    if (!failure) return true;
    HWND control = std::visit(
        [this](auto c) -> HWND {
          if constexpr (std::is_same_v<decltype(c), SourceControl>)
            return source_.Control(c);
          else if constexpr (std::is_same_v<decltype(c), FormatControl>)
            return format_.Control(c);
          else
            return c == MergeControl::Note ? note_ : mismatch_;
        },
        failure->control);
    ReportFailure(control, Wide(failure->message), failure->beep);
    return false;
  }

  MergeEditor& m_;
  HWND note_ = nullptr, mismatch_ = nullptr;
  std::array<HWND, 2> radios_{};
  SourceFrameView source_;
  FormatFrameView format_;
};

}  // namespace

bool ConfigureMergeData(TQMPluginParams& params) { return RunEditor<MergeDialog>(params, MergeEditor()); }

}  // namespace qm::ui
