#include "ui/dialog_window_win32.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

#include "boundary/host_services.h"
#include "dialogs/access_keys.h"
#include "ui/enable_controls.h"
#include "ui/placement_store_win32.h"
#include "ui/themed_scope_win32.h"

namespace qm::ui {

namespace {

constexpr UINT_PTR kBalloonTimer = 1;
constexpr UINT kBalloonMilliseconds = 3000;
// The window property in which a refused OK leaves the beep it sounded
// (MB_ICONEXCLAMATION or MB_OK), so that a test driving the window sees it.
constexpr wchar_t kLastBeepProperty[] = L"qmcsv.lastBeep";
// The window property that leads the page-key hook from a dialog window to its frame.
constexpr wchar_t kFrameProperty[] = L"qmcsv.dialogFrame";
// Posted to itself by a dialog that reopens maximized, once it is shown.
constexpr UINT kMaximizeMessage = WM_APP + 1;

// The placement functions speak workspace coordinates, which start at the
// primary monitor's work area; the store keeps screen coordinates.
POINT WorkspaceOrigin() {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromPoint(POINT{0, 0}, MONITOR_DEFAULTTOPRIMARY), &monitor);
  return POINT{monitor.rcWork.left - monitor.rcMonitor.left, monitor.rcWork.top - monitor.rcMonitor.top};
}

// An empty dialog template: the frame creates every control itself.
struct alignas(DWORD) EmptyTemplate {
  DLGTEMPLATE header;
  WORD menu = 0, windowClass = 0, title = 0;
};

HFONT MakeFont(int scale) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  LOGFONTW font = metrics.lfMessageFont;
  font.lfHeight = MulDiv(font.lfHeight ? font.lfHeight : -12, scale, 100);
  return CreateFontIndirectW(&font);
}

bool IsTextField(HWND control) {
  wchar_t name[16] = {};
  GetClassNameW(control, name, 16);
  return _wcsicmp(name, L"Edit") == 0;
}

}  // namespace

DialogWindow::DialogWindow(std::wstring caption, std::wstring placementName, int width, int height, int scale)
    : caption_(std::move(caption)),
      placementName_(std::move(placementName)),
      width_(width),
      height_(height),
      scale_(std::clamp(scale, 100, 250)) {}

bool DialogWindow::RunModal(HWND owner) {
  ThemedScope themed;
  // The dialog's modal loop shows every message to this thread's message
  // filters first: the page keys are handled there, before the focused
  // control sees them.
  HHOOK pageKeys = SetWindowsHookExW(WH_MSGFILTER, &DialogWindow::PageKeyHook, nullptr, GetCurrentThreadId());
  EmptyTemplate dialog{};
  dialog.header.style = DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME;
  const INT_PTR result = DialogBoxIndirectParamW(OwnModuleHandle(), &dialog.header, owner, &DialogWindow::Procedure,
                                                 reinterpret_cast<LPARAM>(this));
  if (pageKeys) UnhookWindowsHookEx(pageKeys);
  if (font_) DeleteObject(font_);
  font_ = nullptr;
  return result == IDOK;
}

INT_PTR CALLBACK DialogWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    auto* self = reinterpret_cast<DialogWindow*>(lParam);
    SetWindowLongPtrW(window, DWLP_USER, lParam);
    self->window_ = window;
    SetPropW(window, kFrameProperty, self);
  }
  auto* self = reinterpret_cast<DialogWindow*>(GetWindowLongPtrW(window, DWLP_USER));
  return self ? self->Handle(message, wParam, lParam) : FALSE;
}

INT_PTR DialogWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      Create();
      return TRUE;
    case WM_COMMAND: {
      const int id = LOWORD(wParam);
      const int code = HIWORD(wParam);
      const auto control = reinterpret_cast<HWND>(lParam);
      if (code == EN_SETFOCUS && IsTextField(control)) lastEdit_ = control;
      if (code == CBN_SETFOCUS && control) {
        if (HWND edit = FindWindowExW(control, nullptr, L"Edit", nullptr)) lastEdit_ = edit;
      }
      if (id == IDOK && code == BN_CLICKED) {
        if (Confirm()) EndDialog(window_, IDOK);
        return TRUE;
      }
      if (id == IDCANCEL) {
        EndDialog(window_, IDCANCEL);
        return TRUE;
      }
      if (id == kIdInsertVariable && code == BN_CLICKED) {
        InsertVariable();
        return TRUE;
      }
      Command(id, code, control);
      return TRUE;
    }
    case WM_NOTIFY: {
      const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
      if (header.hwndFrom == tabs_ && header.code == TCN_SELCHANGE) {
        int tab = TabCtrl_GetCurSel(tabs_);
        for (int page = 0; page < static_cast<int>(pages_.size()); ++page) {
          if (!pages_[static_cast<size_t>(page)].visible) continue;
          if (tab-- == 0) {
            ShowPage(page);
            break;
          }
        }
        return TRUE;
      }
      SetWindowLongPtrW(window_, DWLP_MSGRESULT, Notify(header));
      return TRUE;
    }
    case WM_CONTEXTMENU:
      ContextMenu(reinterpret_cast<HWND>(wParam), POINT{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
      return TRUE;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN: {
      // Labels, check boxes and group boxes on a page take the colour of the
      // tab control's body, not the dialog's; a disabled edit field (which
      // asks here too) the background EnableControls chose for it.
      const auto control = reinterpret_cast<HWND>(lParam);
      if (PageOf(control) < 0) return FALSE;
      const auto dc = reinterpret_cast<HDC>(wParam);
      SetBkMode(dc, TRANSPARENT);
      SetTextColor(dc, GetSysColor(IsWindowEnabled(control) ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT));
      return reinterpret_cast<INT_PTR>(GetSysColorBrush(ControlBackground(control)));
    }
    case WM_ERASEBKGND: {
      // Themed group boxes have their parent, this dialog, paint what lies
      // behind their caption: on a page that is the page's colour.
      const auto dc = reinterpret_cast<HDC>(wParam);
      RECT client;
      GetClientRect(window_, &client);
      FillRect(dc, &client, GetSysColorBrush(COLOR_BTNFACE));
      if (tabs_) {
        RECT body;
        GetWindowRect(tabs_, &body);
        MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&body), 2);
        TabCtrl_AdjustRect(tabs_, FALSE, &body);
        FillRect(dc, &body, GetSysColorBrush(COLOR_WINDOW));
      }
      SetWindowLongPtrW(window_, DWLP_MSGRESULT, TRUE);
      return TRUE;
    }
    case WM_SIZE:
      Relayout();
      return TRUE;
    case WM_GETMINMAXINFO: {
      RECT frame{0, 0, Px(width_), Px(height_)};
      AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE)), FALSE,
                         static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_EXSTYLE)));
      auto& limits = *reinterpret_cast<MINMAXINFO*>(lParam);
      limits.ptMinTrackSize = POINT{frame.right - frame.left, frame.bottom - frame.top};
      return TRUE;
    }
    case WM_TIMER:
      if (wParam == kBalloonTimer) {
        KillTimer(window_, kBalloonTimer);
        if (balloon_) SendMessageW(balloon_, TTM_TRACKACTIVATE, FALSE, 0);
      }
      return TRUE;
    case WM_SHOWWINDOW:
      // The dialog loop shows the dialog at its normal frame; one closed
      // maximized is then maximized again.
      if (wParam && maximizeWhenShown_) {
        maximizeWhenShown_ = false;
        PostMessageW(window_, kMaximizeMessage, 0, 0);
      }
      return FALSE;
    case kMaximizeMessage:
      ShowWindow(window_, SW_MAXIMIZE);
      return TRUE;
    case WM_DESTROY:
      SavePlacement();
      RemovePropW(window_, kLastBeepProperty);
      RemovePropW(window_, kFrameProperty);
      return FALSE;
    default:
      return FALSE;
  }
}

void DialogWindow::Create() {
  font_ = MakeFont(scale_);
  SetWindowTextW(window_, caption_.c_str());
  // The host offers no help call across the plug-in boundary, so the topic
  // is kept on the window: F1 sends WM_HELP with it (HELPINFO.dwContextId) up
  // to the owner, the host's window, which is where help for its steps lives.
  if (helpContext_) SetWindowContextHelpId(window_, helpContext_);
  RECT frame{0, 0, Px(width_), Px(height_)};
  AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_EXSTYLE)));
  SetWindowPos(window_, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  Build();
  AssignAccessKeys();
  Fill();
  if (!pages_.empty()) ShowPage(0);
  if (!RestorePlacement()) Centre();
  Relayout();
}

void DialogWindow::Centre() {
  // Over the owner when it is on screen, else on the owner's (or the
  // primary) monitor's work area.
  RECT frame{}, area{};
  GetWindowRect(window_, &frame);
  HWND owner = GetWindow(window_, GW_OWNER);
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(owner ? owner : window_, MONITOR_DEFAULTTOPRIMARY), &monitor);
  area = monitor.rcWork;
  if (owner && IsWindowVisible(owner) && !IsIconic(owner)) GetWindowRect(owner, &area);
  const int w = frame.right - frame.left, h = frame.bottom - frame.top;
  int x = (area.left + area.right - w) / 2, y = (area.top + area.bottom - h) / 2;
  x = std::max(static_cast<int>(monitor.rcWork.left), std::min(x, static_cast<int>(monitor.rcWork.right) - w));
  y = std::max(static_cast<int>(monitor.rcWork.top), std::min(y, static_cast<int>(monitor.rcWork.bottom) - h));
  SetWindowPos(window_, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

HWND DialogWindow::Add(const wchar_t* windowClass, const wchar_t* text, DWORD style, Box box, int id, unsigned anchor,
                       DWORD exStyle) {
  HWND control = CreateWindowExW(exStyle, windowClass, text, WS_CHILD | WS_VISIBLE | style, Px(box.x), Px(box.y),
                                 Px(box.w), Px(box.h), window_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                 OwnModuleHandle(), nullptr);
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
  placed_.push_back({control, box, anchor, buildingPage_, false});
  return control;
}

HWND DialogWindow::Label(const wchar_t* text, Box box, unsigned anchor) {
  return Add(L"Static", text, SS_LEFT, box, 0, anchor);
}

HWND DialogWindow::Edit(Box box, int id, unsigned anchor, DWORD extra) {
  return Add(L"Edit", L"", WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL | extra, box, id, anchor, WS_EX_CLIENTEDGE);
}

HWND DialogWindow::Memo(Box box, int id, unsigned anchor) {
  return Add(L"Edit", L"", WS_TABSTOP | WS_BORDER | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_AUTOVSCROLL |
                               ES_AUTOHSCROLL | ES_WANTRETURN,
             box, id, anchor, WS_EX_CLIENTEDGE);
}

HWND DialogWindow::Check(const wchar_t* text, Box box, int id) {
  return Add(L"Button", text, WS_TABSTOP | BS_AUTOCHECKBOX, box, id);
}

HWND DialogWindow::Radio(const wchar_t* text, Box box, int id, bool firstOfGroup) {
  return Add(L"Button", text, BS_AUTORADIOBUTTON | (firstOfGroup ? WS_GROUP | WS_TABSTOP : 0), box, id);
}

HWND DialogWindow::DropList(Box box, int id, const std::vector<std::wstring>& items, unsigned anchor) {
  box.h = std::max(box.h, 200);  // the height of the opened list
  HWND control = Add(WC_COMBOBOXW, L"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, box, id, anchor);
  for (const auto& item : items) SendMessageW(control, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
  return control;
}

HWND DialogWindow::EditableList(Box box, int id, const std::vector<std::wstring>& items, unsigned anchor) {
  box.h = std::max(box.h, 200);
  HWND control = Add(WC_COMBOBOXW, L"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL, box, id, anchor);
  for (const auto& item : items) SendMessageW(control, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
  return control;
}

HWND DialogWindow::Button(const wchar_t* text, Box box, int id, unsigned anchor) {
  return Add(L"Button", text, WS_TABSTOP | BS_PUSHBUTTON, box, id, anchor);
}

HWND DialogWindow::Group(const wchar_t* text, Box box, unsigned anchor) {
  return Add(L"Button", text, BS_GROUPBOX, box, 0, anchor);
}

void DialogWindow::AddDialogButtons(bool insertVariable) {
  const int previous = buildingPage_;
  buildingPage_ = -1;
  const int y = height_ - 33;
  // Tab order: the fields, OK, Cancel, then "{V}".
  Add(L"Button", L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON, Box{width_ - 176, y, 80, 25}, IDOK, kFollowRight | kFollowDown);
  Button(L"Cancel", Box{width_ - 88, y, 80, 25}, IDCANCEL, kFollowRight | kFollowDown);
  if (insertVariable) Button(L"{V}", Box{8, y, 40, 25}, kIdInsertVariable, kFollowDown);
  buildingPage_ = previous;
}

void DialogWindow::AddTabs(Box box) {
  tabsBox_ = box;
  tabs_ = Add(WC_TABCONTROLW, L"", WS_TABSTOP | WS_CLIPSIBLINGS, box, kIdTabs, kStretchRight | kStretchDown);
}

void DialogWindow::BeginPage(const wchar_t* title) {
  pages_.push_back({title, true});
  buildingPage_ = static_cast<int>(pages_.size()) - 1;
  InsertTab(pages_.back().title);
}

void DialogWindow::InsertTab(const std::wstring& title) {
  TCITEMW item{};
  item.mask = TCIF_TEXT;
  item.pszText = const_cast<wchar_t*>(title.c_str());
  SendMessageW(tabs_, TCM_INSERTITEMW, static_cast<WPARAM>(TabCtrl_GetItemCount(tabs_)),
               reinterpret_cast<LPARAM>(&item));
}

void DialogWindow::AssignAccessKeys() {
  auto keyed = [](AccessKeys& keys, HWND control) {
    const std::wstring text = TextOf(control);
    const std::u16string given = keys.Assign(std::u16string(text.begin(), text.end()));
    SetText(control, std::wstring(given.begin(), given.end()));
  };
  auto classOf = [](HWND control) {
    wchar_t name[32] = {};
    GetClassNameW(control, name, 32);
    return std::wstring(name);
  };
  // The rule for access keys: a caption that carries a key of its own keeps
  // it ("&Action:"); every other caption that can take one gets a key only
  // by the "&" marker inserted before one of its letters, its text otherwise
  // unchanged. No two captions seen together share a key: the tab captions
  // and "{V}" (on every page; OK and Cancel have Enter and Esc) avoid the
  // keys any caption of the dialog carries, and each page's captions avoid
  // those of the tabs and "{V}" and the keys given on that page.
  const int pageCount = std::max<int>(1, static_cast<int>(pages_.size()));
  auto pageIndex = [](int page) { return std::max(page, 0); };
  std::u16string givenAnywhere;
  std::vector<std::u16string> givenOnPage(static_cast<size_t>(pageCount));
  for (const auto& placed : placed_) {
    const std::wstring text = TextOf(placed.window);
    const char16_t key = AccessKeys::KeyOf(std::u16string(text.begin(), text.end()));
    if (!key) continue;
    givenAnywhere += key;
    givenOnPage[static_cast<size_t>(pageIndex(placed.page))] += key;
  }
  for (const auto& page : pages_) {
    if (const char16_t key = AccessKeys::KeyOf(std::u16string(page.title.begin(), page.title.end()))) givenAnywhere += key;
  }
  AccessKeys shared(givenAnywhere);
  for (auto& page : pages_) {
    const std::u16string given = shared.Assign(std::u16string(page.title.begin(), page.title.end()));
    page.title.assign(given.begin(), given.end());
  }
  TabCtrl_DeleteAllItems(tabs_);
  for (const auto& page : pages_) {
    if (page.visible) InsertTab(page.title);
  }
  if (HWND insert = GetDlgItem(window_, kIdInsertVariable)) keyed(shared, insert);
  const std::u16string onEveryPage = shared.Taken().substr(givenAnywhere.size());
  // Each page (a dialog without tabs is one page): its buttons, and the
  // labels that name the control right after them. A note and a group box
  // name nothing.
  pageKeys_.assign(static_cast<size_t>(pageCount), {});
  for (int page = 0; page < pageCount; ++page) {
    AccessKeys keys(onEveryPage + givenOnPage[static_cast<size_t>(page)]);
    for (size_t i = 0; i < placed_.size(); ++i) {
      const HWND control = placed_[i].window;
      if (placed_[i].page != page && !(pages_.empty() && placed_[i].page < 0)) continue;
      const int id = GetDlgCtrlID(control);
      if (id == IDOK || id == IDCANCEL || id == kIdInsertVariable) continue;
      const std::wstring kind = classOf(control);
      const auto style = static_cast<DWORD>(GetWindowLongPtrW(control, GWL_STYLE));
      if (kind == L"Button" && (style & BS_TYPEMASK) != BS_GROUPBOX) keyed(keys, control);
      if (kind != L"Static" || i + 1 == placed_.size()) continue;
      const HWND next = placed_[i + 1].window;
      const auto nextStyle = static_cast<DWORD>(GetWindowLongPtrW(next, GWL_STYLE));
      if (classOf(next) != L"Static" && (nextStyle & WS_TABSTOP)) keyed(keys, control);
    }
    pageKeys_[static_cast<size_t>(page)] = keys.Taken();
  }
}

void DialogWindow::SetLabel(HWND label, const std::wstring& text) {
  // The new text gets a key by the same rule, among the keys its page holds
  // without the label's old one.
  const size_t page = static_cast<size_t>(std::max(PageOf(label), 0));
  if (page >= pageKeys_.size()) {
    SetText(label, text);
    return;
  }
  const std::wstring old = TextOf(label);
  std::u16string taken = pageKeys_[page];
  if (const char16_t key = AccessKeys::KeyOf(std::u16string(old.begin(), old.end()))) {
    const auto at = taken.rfind(key);
    if (at != std::u16string::npos) taken.erase(at, 1);
  }
  AccessKeys keys(taken);
  const std::u16string given = keys.Assign(std::u16string(text.begin(), text.end()));
  pageKeys_[page] = keys.Taken();
  SetText(label, std::wstring(given.begin(), given.end()));
}

bool DialogWindow::PageKey(const MSG& message) {
  if (pages_.empty() || !IsWindowEnabled(window_)) return false;
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

void DialogWindow::ShowPageByKeyboard(int page) {
  // Focus stays on the tab strip when it had it; else it goes to the new
  // page's first control, never to one now hidden.
  const bool onTabs = GetFocus() == tabs_;
  ShowPage(page);
  if (onTabs) return;
  HWND first = GetNextDlgTabItem(window_, tabs_, FALSE);
  SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first ? first : tabs_), TRUE);
}

LRESULT CALLBACK DialogWindow::PageKeyHook(int code, WPARAM wParam, LPARAM lParam) {
  if (code == MSGF_DIALOGBOX) {
    const auto& message = *reinterpret_cast<const MSG*>(lParam);
    const HWND root = message.hwnd ? GetAncestor(message.hwnd, GA_ROOT) : nullptr;
    auto* self = root ? static_cast<DialogWindow*>(GetPropW(root, kFrameProperty)) : nullptr;
    if (self && self->PageKey(message)) return TRUE;
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

Box DialogWindow::PageArea() const {
  // The tab strip's height at 100%, and a margin inside the page.
  return Box{tabsBox_.x + 10, tabsBox_.y + 32, tabsBox_.w - 20, tabsBox_.h - 42};
}

void DialogWindow::SetPageVisible(int page, bool visible) {
  auto& entry = pages_.at(static_cast<size_t>(page));
  if (entry.visible == visible) return;
  entry.visible = visible;
  // The strip lists the visible pages only, in their order.
  TabCtrl_DeleteAllItems(tabs_);
  for (const auto& p : pages_) {
    if (p.visible) InsertTab(p.title);
  }
  ShowPage(visible || shownPage_ != page ? shownPage_ : 0);
}

void DialogWindow::ShowPage(int page) {
  if (page < 0 || page >= static_cast<int>(pages_.size()) || !pages_[static_cast<size_t>(page)].visible) return;
  shownPage_ = page;
  int tab = 0;
  for (int p = 0; p < page; ++p) tab += pages_[static_cast<size_t>(p)].visible ? 1 : 0;
  TabCtrl_SetCurSel(tabs_, tab);
  for (const auto& placed : placed_) {
    if (placed.page >= 0) ShowWindow(placed.window, placed.page == page && !placed.hidden ? SW_SHOW : SW_HIDE);
  }
}

void DialogWindow::SetVisible(HWND control, bool visible) {
  for (auto& placed : placed_) {
    if (placed.window != control) continue;
    placed.hidden = !visible;
    const bool onPage = placed.page < 0 || placed.page == shownPage_;
    ShowWindow(control, visible && onPage ? SW_SHOW : SW_HIDE);
  }
}

int DialogWindow::CurrentPage() const { return shownPage_; }

int DialogWindow::PageOf(HWND control) const {
  for (HWND w = control; w && w != window_; w = GetParent(w)) {
    for (const auto& placed : placed_) {
      if (placed.window == w) return placed.page;
    }
  }
  return -1;
}

void DialogWindow::Sound(Beep beep) {
  const UINT sound = beep == Beep::Exclamation ? MB_ICONEXCLAMATION : MB_OK;
  MessageBeep(sound);
  SetPropW(window_, kLastBeepProperty, reinterpret_cast<HANDLE>(static_cast<intptr_t>(sound) + 1));
}

void DialogWindow::ReportFailure(HWND control, const std::wstring& message, Beep beep) {
  Sound(beep);
  // A check may fail at a control of a page that is hidden (Save Data checks
  // its format page while the table keeps its own format): that page comes
  // back into the strip and is shown, so that the balloon points at a field
  // the user sees and can mend. The page stays until the dialog next sets
  // its visibility.
  const int page = PageOf(control);
  if (page >= 0) {
    SetPageVisible(page, true);
    ShowPage(page);
  }
  SetFocus(control);

  if (!balloon_) {
    balloon_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_BALLOON | TTS_NOPREFIX |
                                   TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                               window_, nullptr, OwnModuleHandle(), nullptr);
    SendMessageW(balloon_, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
    SendMessageW(balloon_, TTM_SETMAXTIPWIDTH, 0, Px(300));
  }
  TTTOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_TRACK | TTF_ABSOLUTE | TTF_IDISHWND;
  tool.hwnd = window_;
  tool.uId = reinterpret_cast<UINT_PTR>(window_);
  std::wstring text = message;
  tool.lpszText = text.data();
  SendMessageW(balloon_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  SendMessageW(balloon_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  RECT r{};
  GetWindowRect(control, &r);
  SendMessageW(balloon_, TTM_TRACKPOSITION, 0, MAKELPARAM((r.left + r.right) / 2, (r.top + r.bottom) / 2));
  if (message.empty()) return;
  SendMessageW(balloon_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
  SetTimer(window_, kBalloonTimer, kBalloonMilliseconds, nullptr);
}

std::wstring DialogWindow::TextOf(HWND control) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(control)) + 1, L'\0');
  text.resize(static_cast<size_t>(GetWindowTextW(control, text.data(), static_cast<int>(text.size()))));
  return text;
}

void DialogWindow::SetText(HWND control, const std::wstring& text) { SetWindowTextW(control, text.c_str()); }

void DialogWindow::Relayout() {
  RECT client{};
  GetClientRect(window_, &client);
  const int dx = client.right - Px(width_);
  const int dy = client.bottom - Px(height_);
  HDWP batch = BeginDeferWindowPos(static_cast<int>(placed_.size()));
  for (const auto& p : placed_) {
    int x = Px(p.box.x), y = Px(p.box.y), w = Px(p.box.w), h = Px(p.box.h);
    if (p.anchor & kStretchRight) w += dx;
    if (p.anchor & kStretchDown) h += dy;
    if (p.anchor & kFollowRight) x += dx;
    if (p.anchor & kFollowDown) y += dy;
    if (batch) batch = DeferWindowPos(batch, p.window, nullptr, x, y, w, h, SWP_NOZORDER | SWP_NOACTIVATE);
  }
  if (batch) EndDeferWindowPos(batch);
}

void DialogWindow::InsertVariable() {
  const std::u16string chosen = SelectVariable();
  if (!lastEdit_ || chosen.empty()) return;
  const std::wstring text(chosen.begin(), chosen.end());
  SetFocus(lastEdit_);
  SendMessageW(lastEdit_, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
}

bool DialogWindow::RestorePlacement() {
  Placement placement;
  if (!LoadPlacement(placementName_, placement)) return false;
  // Never smaller than the dialog's own size at this scale.
  RECT own{};
  GetWindowRect(window_, &own);
  const RECT& r = placement.frame;
  const int w = std::max(r.right - r.left, own.right - own.left);
  const int h = std::max(r.bottom - r.top, own.bottom - own.top);
  SetWindowPos(window_, nullptr, r.left, r.top, w, h, SWP_NOZORDER | SWP_NOACTIVATE);
  maximizeWhenShown_ = placement.maximized;
  const auto lists = RememberedLists();
  size_t column = 0;
  for (HWND list : lists) {
    const int count = Header_GetItemCount(ListView_GetHeader(list));
    for (int c = 0; c < count && column < placement.columns.size(); ++c, ++column) {
      ListView_SetColumnWidth(list, c, placement.columns[column]);
    }
  }
  return true;
}

void DialogWindow::SavePlacement() {
  Placement placement;
  WINDOWPLACEMENT wp{};
  wp.length = sizeof wp;
  if (!GetWindowPlacement(window_, &wp)) return;
  // The normal frame, whatever the window shows now, and whether it was
  // maximized (or minimized from maximized).
  placement.frame = wp.rcNormalPosition;
  const POINT origin = WorkspaceOrigin();
  OffsetRect(&placement.frame, origin.x, origin.y);
  placement.maximized = wp.showCmd == SW_SHOWMAXIMIZED ||
                        (wp.showCmd == SW_SHOWMINIMIZED && (wp.flags & WPF_RESTORETOMAXIMIZED));
  for (HWND list : RememberedLists()) {
    const int count = Header_GetItemCount(ListView_GetHeader(list));
    for (int c = 0; c < count; ++c) placement.columns.push_back(ListView_GetColumnWidth(list, c));
  }
  ui::SavePlacement(placementName_, placement);
}

}  // namespace qm::ui
