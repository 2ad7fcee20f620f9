// A dialog of an action that reads the task's table: its own "General" page,
// then "Source" (the source frame) and "Source Format" (the format frame),
// the latter shown only for a file or a text.
#pragma once

#include <variant>

#include "dialogs/table_source_pages.h"
#include "ui/dialog_window_win32.h"
#include "ui/frame_view_win32.h"

namespace qm::ui {

class SourcedDialog : public DialogWindow {
 public:
  SourcedDialog(std::u16string_view caption, const wchar_t* placementName, TableSourcePages& pages, int scale);

 protected:
  virtual void BuildGeneral(Box area) = 0;
  virtual void FillGeneral() = 0;
  virtual void ReadGeneral() = 0;
  virtual void GeneralCommand(int /*id*/, int /*code*/) {}
  // The source choice was clicked (some dialogs refresh their own states).
  virtual void SourceChanged() {}

  // Reads every page into the models.
  void ReadAll();
  // Reports a failed check of a control of the General page (`own`) or of a frame.
  template <class Own, class OwnWindow>
  void Report(const CheckFailure<SourcedControl<Own>>& failure, OwnWindow&& ownWindow) {
    HWND control = std::visit(
        [&](auto c) -> HWND {
          if constexpr (std::is_same_v<decltype(c), SourceControl>)
            return source_.Control(c);
          else if constexpr (std::is_same_v<decltype(c), FormatControl>)
            return format_.Control(c);
          else
            return ownWindow(c);
        },
        failure.control);
    ReportFailure(control, std::wstring(failure.message.begin(), failure.message.end()), failure.beep);
  }

 private:
  void Build() final;
  void Fill() final;
  void Command(int id, int code, HWND control) final;

  TableSourcePages& pages_;
  SourceFrameView source_;
  FormatFrameView format_;
};

}  // namespace qm::ui
