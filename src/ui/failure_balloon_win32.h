// The balloon a refused OK shows: the check's message at the centre of the
// control at fault, for three seconds.
#pragma once

#include <windows.h>

#include <string>

namespace qm::ui {

class FailureBalloon {
 public:
  // Shows `message` in a balloon owned by `dialog`, in `font`, at most
  // `maxWidth` pixels wide, pointing at the centre of `control`. An empty
  // message shows none.
  void Show(HWND dialog, HWND control, const std::wstring& message, HFONT font, int maxWidth);
  // A timer of the dialog went off: true when it was the balloon's, which
  // is then hidden.
  bool Timer(HWND dialog, WPARAM timer);

 private:
  HWND balloon_ = nullptr;
};

}  // namespace qm::ui
