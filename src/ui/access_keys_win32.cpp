#include "ui/access_keys_win32.h"

#include <algorithm>

#include "dialogs/dialog_access_keys.h"
#include "ui/text_win32.h"

namespace qm::ui {

namespace {

// What the policy makes of a control: OK, Cancel and "{V}" by their ids,
// the rest by their window class.
CaptionRole RoleOf(HWND control) {
  const int id = GetDlgCtrlID(control);
  if (id == IDOK || id == IDCANCEL) return CaptionRole::DialogButton;
  if (id == kIdInsertVariable) return CaptionRole::EveryPage;
  wchar_t name[32] = {};
  GetClassNameW(control, name, 32);
  const std::wstring kind = name;
  if (kind == L"Static") return CaptionRole::Label;
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(control, GWL_STYLE));
  if (kind == L"Button" && (style & BS_TYPEMASK) != BS_GROUPBOX) return CaptionRole::Button;
  return CaptionRole::Other;
}

}  // namespace

void CaptionKeys::Assign(std::vector<std::wstring>& titles, const std::vector<PlacedControl>& controls) {
  DialogCaptions dialog;
  for (const auto& title : titles) dialog.pages.push_back(Utf16(title));
  for (const auto& placed : controls) {
    const bool tabStop = (GetWindowLongPtrW(placed.window, GWL_STYLE) & WS_TABSTOP) != 0;
    const std::u16string text = Utf16(ControlBuilder::TextOf(placed.window));
    dialog.controls.push_back({text, placed.page, RoleOf(placed.window), tabStop});
  }
  pageKeys_ = AssignAccessKeys(dialog);
  for (size_t page = 0; page < titles.size(); ++page) titles[page] = Wide(dialog.pages[page]);
  for (size_t i = 0; i < controls.size(); ++i) {
    const std::wstring text = Wide(dialog.controls[i].text);
    if (text != ControlBuilder::TextOf(controls[i].window)) ControlBuilder::SetText(controls[i].window, text);
  }
}

void CaptionKeys::SetLabel(HWND label, int page, const std::wstring& text) {
  const auto at = static_cast<size_t>(std::max(page, 0));
  if (at >= pageKeys_.size()) {
    ControlBuilder::SetText(label, text);
    return;
  }
  const std::u16string given = RekeyLabel(pageKeys_[at], Utf16(ControlBuilder::TextOf(label)), Utf16(text));
  ControlBuilder::SetText(label, Wide(given));
}

}  // namespace qm::ui
