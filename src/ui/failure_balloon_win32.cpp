#include "ui/failure_balloon_win32.h"

#include <commctrl.h>

#include "ui/themed_scope_win32.h"

namespace qm::ui {

namespace {

constexpr UINT_PTR kBalloonTimer = 1;
constexpr UINT kBalloonMilliseconds = 3000;

}  // namespace

void FailureBalloon::Show(HWND dialog, HWND control, const std::wstring& message, HFONT font, int maxWidth) {
  if (!balloon_) {
    balloon_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                               WS_POPUP | TTS_BALLOON | TTS_NOPREFIX | TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT,
                               CW_USEDEFAULT, CW_USEDEFAULT, dialog, nullptr, OwnModuleHandle(), nullptr);
    SendMessageW(balloon_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    SendMessageW(balloon_, TTM_SETMAXTIPWIDTH, 0, maxWidth);
  }
  TTTOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_TRACK | TTF_ABSOLUTE | TTF_IDISHWND;
  tool.hwnd = dialog;
  tool.uId = reinterpret_cast<UINT_PTR>(dialog);
  std::wstring text = message;
  tool.lpszText = text.data();
  SendMessageW(balloon_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  SendMessageW(balloon_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  RECT r{};
  GetWindowRect(control, &r);
  SendMessageW(balloon_, TTM_TRACKPOSITION, 0, MAKELPARAM((r.left + r.right) / 2, (r.top + r.bottom) / 2));
  if (message.empty()) return;
  SendMessageW(balloon_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
  SetTimer(dialog, kBalloonTimer, kBalloonMilliseconds, nullptr);
}

bool FailureBalloon::Timer(HWND dialog, WPARAM timer) {
  if (timer != kBalloonTimer) return false;
  KillTimer(dialog, kBalloonTimer);
  if (balloon_) SendMessageW(balloon_, TTM_TRACKACTIVATE, FALSE, 0);
  return true;
}

}  // namespace qm::ui
