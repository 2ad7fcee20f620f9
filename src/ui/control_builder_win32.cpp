#include "ui/control_builder_win32.h"

#include <commctrl.h>

#include <algorithm>

#include "ui/themed_scope_win32.h"

namespace qm::ui {

ControlBuilder::ControlBuilder(int width, int height, int scale)
    : width_(width), height_(height), scale_(std::clamp(scale, 100, 250)) {}

ControlBuilder::~ControlBuilder() {
  if (font_) DeleteObject(font_);
}

void ControlBuilder::Attach(HWND window) {
  window_ = window;
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  LOGFONTW font = metrics.lfMessageFont;
  font.lfHeight = MulDiv(font.lfHeight ? font.lfHeight : -12, scale_, 100);
  if (font_) DeleteObject(font_);
  font_ = CreateFontIndirectW(&font);
}

SIZE ControlBuilder::DesignedFrame() const {
  RECT frame{0, 0, Px(width_), Px(height_)};
  AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_EXSTYLE)));
  return SIZE{frame.right - frame.left, frame.bottom - frame.top};
}

HWND ControlBuilder::Add(const wchar_t* windowClass, const wchar_t* text, DWORD style, Box box, int id, unsigned anchor,
                         DWORD exStyle) {
  HWND control = CreateWindowExW(exStyle, windowClass, text, WS_CHILD | WS_VISIBLE | style, Px(box.x), Px(box.y),
                                 Px(box.w), Px(box.h), window_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                 OwnModuleHandle(), nullptr);
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
  placed_.push_back({control, box, anchor, buildingPage_, false});
  return control;
}

HWND ControlBuilder::Label(const wchar_t* text, Box box, unsigned anchor) {
  return Add(L"Static", text, SS_LEFT, box, 0, anchor);
}

HWND ControlBuilder::Edit(Box box, int id, unsigned anchor, DWORD extra) {
  return Add(L"Edit", L"", WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL | extra, box, id, anchor, WS_EX_CLIENTEDGE);
}

HWND ControlBuilder::Memo(Box box, int id, unsigned anchor) {
  return Add(
      L"Edit", L"",
      WS_TABSTOP | WS_BORDER | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_WANTRETURN,
      box, id, anchor, WS_EX_CLIENTEDGE);
}

HWND ControlBuilder::Check(const wchar_t* text, Box box, int id) {
  return Add(L"Button", text, WS_TABSTOP | BS_AUTOCHECKBOX, box, id);
}

HWND ControlBuilder::Radio(const wchar_t* text, Box box, int id, bool firstOfGroup) {
  return Add(L"Button", text, BS_AUTORADIOBUTTON | (firstOfGroup ? WS_GROUP | WS_TABSTOP : 0), box, id);
}

HWND ControlBuilder::DropList(Box box, int id, const std::vector<std::wstring>& items, unsigned anchor) {
  box.h = std::max(box.h, 200);  // the height of the opened list
  HWND control = Add(WC_COMBOBOXW, L"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, box, id, anchor);
  for (const auto& item : items) SendMessageW(control, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
  return control;
}

HWND ControlBuilder::EditableList(Box box, int id, const std::vector<std::wstring>& items, unsigned anchor) {
  box.h = std::max(box.h, 200);
  HWND control = Add(WC_COMBOBOXW, L"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL, box, id, anchor);
  for (const auto& item : items) SendMessageW(control, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
  return control;
}

HWND ControlBuilder::Button(const wchar_t* text, Box box, int id, unsigned anchor) {
  return Add(L"Button", text, WS_TABSTOP | BS_PUSHBUTTON, box, id, anchor);
}

HWND ControlBuilder::Group(const wchar_t* text, Box box, unsigned anchor) {
  return Add(L"Button", text, BS_GROUPBOX, box, 0, anchor);
}

void ControlBuilder::AddDialogButtons(bool insertVariable) {
  const int previous = buildingPage_;
  buildingPage_ = -1;
  const int y = height_ - 33;
  // Tab order: the fields, OK, Cancel, then "{V}".
  Add(L"Button", L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON, Box{width_ - 176, y, 80, 25}, IDOK, kFollowRight | kFollowDown);
  Button(L"Cancel", Box{width_ - 88, y, 80, 25}, IDCANCEL, kFollowRight | kFollowDown);
  if (insertVariable) Button(L"{V}", Box{8, y, 40, 25}, kIdInsertVariable, kFollowDown);
  buildingPage_ = previous;
}

std::wstring ControlBuilder::TextOf(HWND control) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(control)) + 1, L'\0');
  text.resize(static_cast<size_t>(GetWindowTextW(control, text.data(), static_cast<int>(text.size()))));
  return text;
}

void ControlBuilder::SetText(HWND control, const std::wstring& text) { SetWindowTextW(control, text.c_str()); }

void ControlBuilder::Relayout() {
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

}  // namespace qm::ui
