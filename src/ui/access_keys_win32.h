// The access keys of a built dialog: the policy of dialogs/dialog_access_keys.h
// applied to its tab captions and controls, and a label keyed anew when the
// dialog changes its text.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "ui/control_builder_win32.h"

namespace qm::ui {

class CaptionKeys {
 public:
  // Gives the tab captions (`titles`, in page order) and the captions of
  // `controls` (in tab order) their keys.
  void Assign(std::vector<std::wstring>& titles, const std::vector<PlacedControl>& controls);
  // Sets the text of a label on `page` (-1: on every page), keyed among the
  // keys its page holds; before Assign, the text as it is.
  void SetLabel(HWND label, int page, const std::wstring& text);

 private:
  std::vector<std::u16string> pageKeys_;  // the keys in use on each page
};

}  // namespace qm::ui
