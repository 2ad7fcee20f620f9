#include "ui/dialog_window_win32.h"

#include <windowsx.h>

#include "boundary/host_services.h"
#include "platform/beep.h"
#include "ui/themed_scope_win32.h"

namespace qm::ui {

namespace {

// The window property that leads the page-key hook from a dialog window to its frame.
constexpr wchar_t kFrameProperty[] = L"qmcsv.dialogFrame";

// An empty dialog template: the frame creates every control itself.
struct alignas(DWORD) EmptyTemplate {
  DLGTEMPLATE header;
  WORD menu = 0, windowClass = 0, title = 0;
};

bool IsTextField(HWND control) {
  wchar_t name[16] = {};
  GetClassNameW(control, name, 16);
  return _wcsicmp(name, L"Edit") == 0;
}

}  // namespace

DialogWindow::DialogWindow(std::wstring caption, std::wstring placementName, int width, int height, int scale)
    : TabPages(width, height, scale), caption_(std::move(caption)), placement_(std::move(placementName)) {}

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
  return result == IDOK;
}

INT_PTR CALLBACK DialogWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    auto* self = reinterpret_cast<DialogWindow*>(lParam);
    SetWindowLongPtrW(window, DWLP_USER, lParam);
    self->Attach(window);
    SetPropW(window, kFrameProperty, self);
  }
  auto* self = reinterpret_cast<DialogWindow*>(GetWindowLongPtrW(window, DWLP_USER));
  return self ? self->HandleMessage(message, wParam, lParam) : FALSE;
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

INT_PTR DialogWindow::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const HWND window = Handle();
  switch (message) {
    case WM_INITDIALOG: Create(); return TRUE;
    case WM_COMMAND: {
      const auto control = reinterpret_cast<HWND>(lParam);
      if (!ButtonCommand(LOWORD(wParam), HIWORD(wParam), control)) Command(LOWORD(wParam), HIWORD(wParam), control);
      return TRUE;
    }
    case WM_NOTIFY: {
      const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
      if (TabNotify(header)) return TRUE;
      SetWindowLongPtrW(window, DWLP_MSGRESULT, Notify(header));
      return TRUE;
    }
    case WM_CONTEXTMENU:
      ContextMenu(reinterpret_cast<HWND>(wParam), POINT{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
      return TRUE;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
      return reinterpret_cast<INT_PTR>(PageColour(reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam)));
    case WM_ERASEBKGND:
      PaintBackground(reinterpret_cast<HDC>(wParam));
      SetWindowLongPtrW(window, DWLP_MSGRESULT, TRUE);
      return TRUE;
    case WM_SIZE: Relayout(); return TRUE;
    case WM_GETMINMAXINFO: {
      const SIZE frame = DesignedFrame();
      reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = POINT{frame.cx, frame.cy};
      return TRUE;
    }
    case WM_TIMER: balloon_.Timer(window, wParam); return TRUE;
    case WM_SHOWWINDOW: placement_.Shown(window, wParam != 0); return FALSE;
    case DialogPlacement::kMaximizeMessage: ShowWindow(window, SW_MAXIMIZE); return TRUE;
    case WM_DESTROY:
      placement_.Save(window, RememberedLists());
      RemovePropW(window, kFrameProperty);
      return FALSE;
    default: return FALSE;
  }
}

void DialogWindow::Create() {
  const HWND window = Handle();
  SetWindowTextW(window, caption_.c_str());
  // The host offers no help call across the plug-in boundary, so the topic
  // is kept on the window: F1 sends WM_HELP with it (HELPINFO.dwContextId) up
  // to the owner, the host's window, which is where help for its steps lives.
  if (helpContext_) SetWindowContextHelpId(window, helpContext_);
  const SIZE frame = DesignedFrame();
  SetWindowPos(window, nullptr, 0, 0, frame.cx, frame.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  Build();
  auto titles = PageTitles();
  keys_.Assign(titles, Controls());
  SetPageTitles(titles);
  Fill();
  ShowPage(0);
  placement_.Restore(window, RememberedLists());
  Relayout();
}

// OK, Cancel and "{V}", and the text field "{V}" inserts into: the last to
// take the focus (an editable list's own field for the list). True when the
// command was one of the buttons'.
bool DialogWindow::ButtonCommand(int id, int code, HWND control) {
  if (code == EN_SETFOCUS && IsTextField(control)) lastEdit_ = control;
  if (code == CBN_SETFOCUS && control) {
    if (HWND edit = FindWindowExW(control, nullptr, L"Edit", nullptr)) lastEdit_ = edit;
  }
  if (id == IDOK && code == BN_CLICKED) {
    if (Confirm()) EndDialog(Handle(), IDOK);
    return true;
  }
  if (id == IDCANCEL) {
    EndDialog(Handle(), IDCANCEL);
    return true;
  }
  if (id == kIdInsertVariable && code == BN_CLICKED) {
    InsertVariable();
    return true;
  }
  return false;
}

void DialogWindow::InsertVariable() {
  const std::u16string chosen = SelectVariable();
  if (!lastEdit_ || chosen.empty()) return;
  const std::wstring text(chosen.begin(), chosen.end());
  SetFocus(lastEdit_);
  SendMessageW(lastEdit_, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
}

void DialogWindow::ReportFailure(HWND control, const std::wstring& message, Beep beep) {
  SoundBeep(beep);
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
  balloon_.Show(Handle(), control, message, Font(), Px(300));
}

void DialogWindow::SetLabel(HWND label, const std::wstring& text) { keys_.SetLabel(label, PageOf(label), text); }

}  // namespace qm::ui
