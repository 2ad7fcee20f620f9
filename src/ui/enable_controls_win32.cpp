#include <windows.h>
#include <commctrl.h>

#include <cwchar>

#include "ui/enable_controls.h"

namespace qm {

namespace {

constexpr wchar_t kLabelFor[] = L"qmcsv.labelFor";
constexpr wchar_t kBackground[] = L"qmcsv.background";

enum class Kind { Label, Field, ListView, TreeView, Other };

Kind KindOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  if (_wcsicmp(name, L"Static") == 0) return Kind::Label;
  if (_wcsicmp(name, WC_LISTVIEWW) == 0) return Kind::ListView;
  if (_wcsicmp(name, WC_TREEVIEWW) == 0) return Kind::TreeView;
  if (_wcsicmp(name, L"Edit") == 0 || _wcsicmp(name, L"ComboBox") == 0 || _wcsicmp(name, L"ListBox") == 0) {
    return Kind::Field;
  }
  return Kind::Other;
}

void SetBackground(HWND window, Kind kind, bool enabled) {
  const int index = enabled ? COLOR_WINDOW : COLOR_BTNFACE;
  SetPropW(window, kBackground, reinterpret_cast<HANDLE>(static_cast<intptr_t>(index + 1)));
  if (kind == Kind::ListView) SendMessageW(window, LVM_SETBKCOLOR, 0, static_cast<LPARAM>(GetSysColor(index)));
  if (kind == Kind::TreeView) SendMessageW(window, TVM_SETBKCOLOR, 0, static_cast<LPARAM>(GetSysColor(index)));
  InvalidateRect(window, nullptr, TRUE);
}

}  // namespace

void SetLabelFor(void* label, void* control) { SetPropW(static_cast<HWND>(label), kLabelFor, control); }

void EnableControls(void* control, bool enabled) {
  const auto window = static_cast<HWND>(control);
  if (!window) return;
  const Kind kind = KindOf(window);
  if (kind == Kind::Label) {
    EnableWindow(window, enabled);
    EnableControls(GetPropW(window, kLabelFor), enabled);
    return;
  }
  EnableWindow(window, enabled);
  if (kind != Kind::Other) {
    SetBackground(window, kind, enabled);
    return;
  }
  // A container: its children in order (the direct ones; they pass it on).
  for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    EnableControls(child, enabled);
  }
}

int32_t ControlBackground(void* control) {
  const auto stored = reinterpret_cast<intptr_t>(GetPropW(static_cast<HWND>(control), kBackground));
  return stored ? static_cast<int32_t>(stored - 1) : COLOR_WINDOW;
}

}  // namespace qm
