#include "ui/tab_pages_win32.h"

#include <commctrl.h>

#include <algorithm>

#include "dialogs/access_keys.h"
#include "ui/enable_controls.h"

namespace qm::ui {

void TabPages::AddTabs(Box box) {
  tabsBox_ = box;
  tabs_ = Add(WC_TABCONTROLW, L"", WS_TABSTOP | WS_CLIPSIBLINGS, box, kIdTabs, kStretchRight | kStretchDown);
}

void TabPages::BeginPage(const wchar_t* title) {
  pages_.push_back({title, true});
  BuildOnPage(static_cast<int>(pages_.size()) - 1);
  InsertTab(pages_.back().title);
}

void TabPages::InsertTab(const std::wstring& title) {
  TCITEMW item{};
  item.mask = TCIF_TEXT;
  item.pszText = const_cast<wchar_t*>(title.c_str());
  SendMessageW(tabs_, TCM_INSERTITEMW, static_cast<WPARAM>(TabCtrl_GetItemCount(tabs_)),
               reinterpret_cast<LPARAM>(&item));
}

void TabPages::FillStrip() {
  // The strip lists the visible pages only, in their order.
  TabCtrl_DeleteAllItems(tabs_);
  for (const auto& page : pages_) {
    if (page.visible) InsertTab(page.title);
  }
}

std::vector<std::wstring> TabPages::PageTitles() const {
  std::vector<std::wstring> titles;
  for (const auto& page : pages_) titles.push_back(page.title);
  return titles;
}

void TabPages::SetPageTitles(const std::vector<std::wstring>& titles) {
  for (size_t page = 0; page < pages_.size() && page < titles.size(); ++page) pages_[page].title = titles[page];
  FillStrip();
}

Box TabPages::PageArea() const {
  // The tab strip's height at 100%, and a margin inside the page.
  return Box{tabsBox_.x + 10, tabsBox_.y + 32, tabsBox_.w - 20, tabsBox_.h - 42};
}

void TabPages::SetPageVisible(int page, bool visible) {
  auto& entry = pages_.at(static_cast<size_t>(page));
  if (entry.visible == visible) return;
  entry.visible = visible;
  FillStrip();
  ShowPage(visible || shownPage_ != page ? shownPage_ : 0);
}

void TabPages::ShowPage(int page) {
  if (page < 0 || page >= static_cast<int>(pages_.size()) || !pages_[static_cast<size_t>(page)].visible) return;
  shownPage_ = page;
  int tab = 0;
  for (int p = 0; p < page; ++p) tab += pages_[static_cast<size_t>(p)].visible ? 1 : 0;
  TabCtrl_SetCurSel(tabs_, tab);
  for (const auto& placed : Controls()) {
    if (placed.page >= 0) ShowWindow(placed.window, placed.page == page && !placed.hidden ? SW_SHOW : SW_HIDE);
  }
}

void TabPages::SetVisible(HWND control, bool visible) {
  for (auto& placed : Controls()) {
    if (placed.window != control) continue;
    placed.hidden = !visible;
    const bool onPage = placed.page < 0 || placed.page == shownPage_;
    ShowWindow(control, visible && onPage ? SW_SHOW : SW_HIDE);
  }
}

int TabPages::PageOf(HWND control) const {
  for (HWND w = control; w && w != Handle(); w = GetParent(w)) {
    for (const auto& placed : Controls()) {
      if (placed.window == w) return placed.page;
    }
  }
  return -1;
}

bool TabPages::TabNotify(const NMHDR& header) {
  if (header.hwndFrom != tabs_ || header.code != TCN_SELCHANGE) return false;
  int tab = TabCtrl_GetCurSel(tabs_);
  for (int page = 0; page < static_cast<int>(pages_.size()); ++page) {
    if (!pages_[static_cast<size_t>(page)].visible) continue;
    if (tab-- == 0) {
      ShowPage(page);
      break;
    }
  }
  return true;
}

bool TabPages::PageKey(const MSG& message) {
  if (pages_.empty() || !IsWindowEnabled(Handle())) return false;
  std::vector<int> shown;
  for (int page = 0; page < static_cast<int>(pages_.size()); ++page) {
    if (pages_[static_cast<size_t>(page)].visible) shown.push_back(page);
  }
  const auto at = std::find(shown.begin(), shown.end(), shownPage_) - shown.begin();
  const int count = static_cast<int>(shown.size());
  const bool ctrl = GetKeyState(VK_CONTROL) < 0;
  if (message.message == WM_KEYDOWN && ctrl) {
    int step = 0;
    if (message.wParam == VK_TAB) step = GetKeyState(VK_SHIFT) < 0 ? -1 : 1;
    if (message.wParam == VK_NEXT) step = 1;
    if (message.wParam == VK_PRIOR) step = -1;
    if (step == 0) return false;
    ShowPageByKeyboard(shown[static_cast<size_t>((at + step + count) % count)]);
    return true;
  }
  if (message.message == WM_SYSCHAR) {
    auto key = static_cast<char16_t>(message.wParam);
    if (key >= u'a' && key <= u'z') key = static_cast<char16_t>(key - u'a' + u'A');
    for (int page : shown) {
      const auto& title = pages_[static_cast<size_t>(page)].title;
      if (AccessKeys::KeyOf(std::u16string(title.begin(), title.end())) != key) continue;
      ShowPageByKeyboard(page);
      return true;
    }
  }
  return false;
}

void TabPages::ShowPageByKeyboard(int page) {
  // Focus stays on the tab strip when it had it; else it goes to the new
  // page's first control, never to one now hidden.
  const bool onTabs = GetFocus() == tabs_;
  ShowPage(page);
  if (onTabs) return;
  HWND first = GetNextDlgTabItem(Handle(), tabs_, FALSE);
  SendMessageW(Handle(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first ? first : tabs_), TRUE);
}

void TabPages::PaintBackground(HDC dc) const {
  // Themed group boxes have their parent, the dialog, paint what lies behind
  // their caption: on a page that is the page's colour.
  RECT client;
  GetClientRect(Handle(), &client);
  FillRect(dc, &client, GetSysColorBrush(COLOR_BTNFACE));
  if (!tabs_) return;
  RECT body;
  GetWindowRect(tabs_, &body);
  MapWindowPoints(nullptr, Handle(), reinterpret_cast<POINT*>(&body), 2);
  TabCtrl_AdjustRect(tabs_, FALSE, &body);
  FillRect(dc, &body, GetSysColorBrush(COLOR_WINDOW));
}

HBRUSH TabPages::PageColour(HWND control, HDC dc) const {
  // Labels, check boxes and group boxes on a page take the colour of the tab
  // control's body, not the dialog's; a disabled edit field (which asks here
  // too) the background EnableControls chose for it.
  if (PageOf(control) < 0) return nullptr;
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, GetSysColor(IsWindowEnabled(control) ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
  return GetSysColorBrush(ControlBackground(control));
}

}  // namespace qm::ui
