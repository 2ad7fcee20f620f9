// Where a dialog opens: at the size, position and list-column widths it had
// when it last closed (the placement store), maximized again when it closed
// so; else centred over its owner.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace qm::ui {

class DialogPlacement {
 public:
  // `name` names the dialog's section in the placement store.
  explicit DialogPlacement(std::wstring name) : name_(std::move(name)) {}

  // Places the dialog, sized at least as it is now, and the widths of the
  // columns of `lists` (list views, in order).
  void Restore(HWND dialog, const std::vector<HWND>& lists);
  // The dialog closes: its normal frame, whether it was maximized and the
  // column widths go to the store.
  void Save(HWND dialog, const std::vector<HWND>& lists) const;
  // The dialog is shown (WM_SHOWWINDOW): one that closed maximized is
  // maximized again once the dialog loop has shown it at its normal frame.
  void Shown(HWND dialog, bool shown);
  // The message the dialog posts itself to maximize.
  static constexpr UINT kMaximizeMessage = WM_APP + 1;

 private:
  bool RestoreSaved(HWND dialog, const std::vector<HWND>& lists);
  static void Centre(HWND dialog);

  std::wstring name_;
  bool maximizeWhenShown_ = false;
};

}  // namespace qm::ui
