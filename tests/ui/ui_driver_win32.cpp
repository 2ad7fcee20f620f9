#include "ui_driver_win32.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <thread>
#include <vector>

#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb_image_write.h>

namespace qm::test {

namespace {

constexpr int kWaitSteps = 100;
constexpr DWORD kStepMilliseconds = 50;

std::wstring WithoutMnemonic(std::wstring text) {
  std::wstring out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'&' && i + 1 < text.size()) ++i;
    out.push_back(text[i]);
  }
  while (!out.empty() && out.back() == L' ') out.pop_back();
  return out;
}

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  return name;
}

// The dialog's direct children in z-order, which is their tab order.
std::vector<HWND> Children(HWND dialog) {
  std::vector<HWND> children;
  for (HWND w = GetWindow(dialog, GW_CHILD); w; w = GetWindow(w, GW_HWNDNEXT)) children.push_back(w);
  return children;
}

void Settle() { Sleep(kStepMilliseconds); }

}  // namespace

void DriveDialog(const std::function<void()>& open, const std::function<void()>& script) {
  std::thread driver([&script] { script(); });
  open();
  driver.join();
}

HWND WaitForWindow(const std::wstring& caption) {
  for (int i = 0; i < kWaitSteps; ++i) {
    HWND found = FindWindowW(nullptr, caption.c_str());
    if (found && IsWindowVisible(found)) {
      Settle();
      return found;
    }
    Sleep(kStepMilliseconds);
  }
  ADD_FAILURE() << "no window appeared";
  return nullptr;
}

HWND WaitForOwnedDialog(HWND owner) {
  for (int i = 0; i < kWaitSteps; ++i) {
    for (HWND w = FindWindowExW(nullptr, nullptr, L"#32770", nullptr); w;
         w = FindWindowExW(nullptr, w, L"#32770", nullptr)) {
      if (GetWindow(w, GW_OWNER) == owner && IsWindowVisible(w)) {
        Settle();
        return w;
      }
    }
    Sleep(kStepMilliseconds);
  }
  ADD_FAILURE() << "no dialog of the window appeared";
  return nullptr;
}

bool WaitUntilClosed(HWND window) {
  for (int i = 0; i < kWaitSteps; ++i) {
    if (!IsWindow(window)) return true;
    Sleep(kStepMilliseconds);
  }
  return false;
}

HWND ByLabel(HWND dialog, const std::wstring& label) {
  const auto children = Children(dialog);
  for (size_t i = 0; i < children.size(); ++i) {
    if (ClassOf(children[i]) != L"Static" || WithoutMnemonic(Text(children[i])) != label) continue;
    for (size_t j = i + 1; j < children.size(); ++j) {
      if (GetWindowLongPtrW(children[j], GWL_STYLE) & WS_TABSTOP) return children[j];
    }
  }
  ADD_FAILURE() << "no control labelled " << std::string(label.begin(), label.end());
  return nullptr;
}

HWND ByCaption(HWND dialog, const std::wstring& caption) {
  for (HWND w : Children(dialog)) {
    if (ClassOf(w) == L"Button" && WithoutMnemonic(Text(w)) == caption) return w;
  }
  ADD_FAILURE() << "no button " << std::string(caption.begin(), caption.end());
  return nullptr;
}

std::wstring Text(HWND control) {
  const auto length = SendMessageW(control, WM_GETTEXTLENGTH, 0, 0);
  std::wstring text(static_cast<size_t>(length) + 1, L'\0');
  text.resize(
      static_cast<size_t>(SendMessageW(control, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
  return text;
}

void Type(HWND field, const std::wstring& text) {
  SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
  // WM_SETTEXT notifies an edit's parent itself; a combo box's edit is told here.
  const HWND parent = GetParent(field);
  if (ClassOf(field) == L"ComboBox") {
    SendMessageW(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(field), CBN_EDITCHANGE), reinterpret_cast<LPARAM>(field));
  }
  Settle();
}

void TypeKeys(HWND field, const std::wstring& text) {
  for (wchar_t c : text) PostMessageW(field, WM_CHAR, c, 1);
  Settle();
}

void Click(HWND button) {
  SendMessageW(button, BM_CLICK, 0, 0);
  Settle();
}

void ClickLater(HWND button) {
  PostMessageW(button, BM_CLICK, 0, 0);
  Settle();
}

void SelectItem(HWND listView, int item) {
  LVITEMW state{};
  state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  SendMessageW(listView, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
  if (item >= 0) {
    state.state = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(listView, LVM_SETITEMSTATE, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&state));
  }
  Settle();
}

void DoubleClickItemLater(HWND listView, int item) {
  RECT r{};
  r.left = LVIR_LABEL;
  SendMessageW(listView, LVM_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&r));
  const LPARAM at = MAKELPARAM((r.left + r.right) / 2, (r.top + r.bottom) / 2);
  // The first click of the two selects the item.
  SelectItem(listView, item);
  PostMessageW(listView, WM_LBUTTONDBLCLK, MK_LBUTTON, at);
  PostMessageW(listView, WM_LBUTTONUP, 0, at);
  Settle();
}

void DoubleClickBelowRowsLater(HWND listView) {
  RECT client{};
  GetClientRect(listView, &client);
  const LPARAM at = MAKELPARAM(client.right / 2, client.bottom - 4);
  SelectItem(listView, -1);
  PostMessageW(listView, WM_LBUTTONDBLCLK, MK_LBUTTON, at);
  PostMessageW(listView, WM_LBUTTONUP, 0, at);
  Settle();
}

void Choose(HWND comboBox, int index) {
  SendMessageW(comboBox, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
  SendMessageW(GetParent(comboBox), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(comboBox), CBN_SELCHANGE),
               reinterpret_cast<LPARAM>(comboBox));
  Settle();
}

bool IsChecked(HWND button) { return SendMessageW(button, BM_GETCHECK, 0, 0) == BST_CHECKED; }

HWND Focused(HWND dialog) {
  GUITHREADINFO gui{};
  gui.cbSize = sizeof gui;
  return GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &gui) ? gui.hwndFocus : nullptr;
}

std::wstring CaptionOf(HWND control) { return WithoutMnemonic(Text(control)); }

void PressAlt(HWND dialog, wchar_t key) {
  HWND focus = Focused(dialog);
  // Bit 29: Alt is down.
  PostMessageW(focus ? focus : dialog, WM_SYSCHAR, static_cast<WPARAM>(key), 1 | (1 << 29));
  Settle();
  Settle();
}

void Press(HWND dialog, WORD key, bool ctrl, bool shift) {
  const DWORD thread = GetWindowThreadProcessId(dialog, nullptr);
  HWND focus = Focused(dialog);
  HWND target = focus ? focus : dialog;
  // Ctrl and Shift are read from the keyboard state the two threads then share.
  AttachThreadInput(GetCurrentThreadId(), thread, TRUE);
  BYTE keys[256] = {};
  GetKeyboardState(keys);
  if (ctrl || shift) {
    if (ctrl) keys[VK_CONTROL] = 0x80;
    if (shift) keys[VK_SHIFT] = 0x80;
    SetKeyboardState(keys);
  }
  PostMessageW(target, WM_KEYDOWN, key, 1);
  PostMessageW(target, WM_KEYUP, key, 1 | (3u << 30));
  Settle();
  Settle();
  if (ctrl || shift) {
    keys[VK_CONTROL] = 0;
    keys[VK_SHIFT] = 0;
    SetKeyboardState(keys);
  }
  AttachThreadInput(GetCurrentThreadId(), thread, FALSE);
}

void Focus(HWND control) {
  // Focus belongs to the dialog's thread: ask it to move there.
  const HWND dialog = GetAncestor(control, GA_ROOT);
  SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
  Settle();
}

int ShownTab(HWND dialog) {
  for (HWND w : Children(dialog)) {
    if (ClassOf(w) == WC_TABCONTROLW) return static_cast<int>(SendMessageW(w, TCM_GETCURSEL, 0, 0));
  }
  return -1;
}

void SelectTab(HWND dialog, int index) {
  for (HWND w : Children(dialog)) {
    if (ClassOf(w) != WC_TABCONTROLW) continue;
    SendMessageW(w, TCM_SETCURSEL, static_cast<WPARAM>(index), 0);
    NMHDR header{w, static_cast<UINT_PTR>(GetDlgCtrlID(w)), static_cast<UINT>(TCN_SELCHANGE)};
    SendMessageW(dialog, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
    Settle();
    return;
  }
}

std::wstring BalloonText(HWND dialog) {
  for (HWND w = FindWindowExW(nullptr, nullptr, TOOLTIPS_CLASSW, nullptr); w;
       w = FindWindowExW(nullptr, w, TOOLTIPS_CLASSW, nullptr)) {
    if (GetWindow(w, GW_OWNER) != dialog || !IsWindowVisible(w)) continue;
    wchar_t text[512] = {};
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    if (!SendMessageW(w, TTM_ENUMTOOLSW, 0, reinterpret_cast<LPARAM>(&tool))) continue;
    tool.lpszText = text;
    SendMessageW(w, TTM_GETTEXTW, 512, reinterpret_cast<LPARAM>(&tool));
    return text;
  }
  return {};
}

bool Screenshot(HWND window, const std::string& path) {
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
  Settle();
  RECT r{};
  GetWindowRect(window, &r);
  // The window's own popups that show (a failure balloon) may reach past
  // its edge: the picture takes them in whole.
  struct Owned {
    HWND owner;
    RECT* area;
  } owned{window, &r};
  EnumWindows(
      [](HWND w, LPARAM param) -> BOOL {
        const auto* o = reinterpret_cast<const Owned*>(param);
        RECT popup{};
        if (GetWindow(w, GW_OWNER) == o->owner && IsWindowVisible(w) && GetWindowRect(w, &popup)) {
          UnionRect(o->area, o->area, &popup);
        }
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&owned));
  const int width = r.right - r.left, height = r.bottom - r.top;
  HDC screen = GetDC(nullptr);
  HDC memory = CreateCompatibleDC(screen);
  BITMAPINFO info{};
  info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ old = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, width, height, screen, r.left, r.top, SRCCOPY);
  std::vector<unsigned char> rgb(static_cast<size_t>(width) * static_cast<size_t>(height) * 3);
  const auto* bgra = static_cast<const unsigned char*>(bits);
  for (size_t i = 0; i < rgb.size() / 3; ++i) {
    rgb[i * 3] = bgra[i * 4 + 2];
    rgb[i * 3 + 1] = bgra[i * 4 + 1];
    rgb[i * 3 + 2] = bgra[i * 4];
  }
  SelectObject(memory, old);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return stbi_write_png(path.c_str(), width, height, 3, rgb.data(), width * 3) != 0;
}

}  // namespace qm::test
