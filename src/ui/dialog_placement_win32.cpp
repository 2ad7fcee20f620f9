#include "ui/dialog_placement_win32.h"

#include <commctrl.h>

#include <algorithm>

#include "ui/placement_store_win32.h"

namespace qm::ui {

namespace {

// The placement functions speak workspace coordinates, which start at the
// primary monitor's work area; the store keeps screen coordinates.
POINT WorkspaceOrigin() {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromPoint(POINT{0, 0}, MONITOR_DEFAULTTOPRIMARY), &monitor);
  return POINT{monitor.rcWork.left - monitor.rcMonitor.left, monitor.rcWork.top - monitor.rcMonitor.top};
}

}  // namespace

void DialogPlacement::Restore(HWND dialog, const std::vector<HWND>& lists) {
  if (!RestoreSaved(dialog, lists)) Centre(dialog);
}

bool DialogPlacement::RestoreSaved(HWND dialog, const std::vector<HWND>& lists) {
  Placement placement;
  if (!LoadPlacement(name_, placement)) return false;
  // Never smaller than the dialog's own size at this scale.
  RECT own{};
  GetWindowRect(dialog, &own);
  const RECT& r = placement.frame;
  const int w = std::max(r.right - r.left, own.right - own.left);
  const int h = std::max(r.bottom - r.top, own.bottom - own.top);
  SetWindowPos(dialog, nullptr, r.left, r.top, w, h, SWP_NOZORDER | SWP_NOACTIVATE);
  maximizeWhenShown_ = placement.maximized;
  size_t column = 0;
  for (HWND list : lists) {
    const int count = Header_GetItemCount(ListView_GetHeader(list));
    for (int c = 0; c < count && column < placement.columns.size(); ++c, ++column) {
      ListView_SetColumnWidth(list, c, placement.columns[column]);
    }
  }
  return true;
}

void DialogPlacement::Centre(HWND dialog) {
  // Over the owner when it is on screen, else on the owner's (or the
  // primary) monitor's work area.
  RECT frame{}, area{};
  GetWindowRect(dialog, &frame);
  HWND owner = GetWindow(dialog, GW_OWNER);
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(owner ? owner : dialog, MONITOR_DEFAULTTOPRIMARY), &monitor);
  area = monitor.rcWork;
  if (owner && IsWindowVisible(owner) && !IsIconic(owner)) GetWindowRect(owner, &area);
  const int w = frame.right - frame.left, h = frame.bottom - frame.top;
  int x = (area.left + area.right - w) / 2, y = (area.top + area.bottom - h) / 2;
  x = std::max(static_cast<int>(monitor.rcWork.left), std::min(x, static_cast<int>(monitor.rcWork.right) - w));
  y = std::max(static_cast<int>(monitor.rcWork.top), std::min(y, static_cast<int>(monitor.rcWork.bottom) - h));
  SetWindowPos(dialog, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void DialogPlacement::Shown(HWND dialog, bool shown) {
  if (!shown || !maximizeWhenShown_) return;
  maximizeWhenShown_ = false;
  PostMessageW(dialog, kMaximizeMessage, 0, 0);
}

void DialogPlacement::Save(HWND dialog, const std::vector<HWND>& lists) const {
  Placement placement;
  WINDOWPLACEMENT wp{};
  wp.length = sizeof wp;
  if (!GetWindowPlacement(dialog, &wp)) return;
  // The normal frame, whatever the window shows now, and whether it was
  // maximized (or minimized from maximized).
  placement.frame = wp.rcNormalPosition;
  const POINT origin = WorkspaceOrigin();
  OffsetRect(&placement.frame, origin.x, origin.y);
  placement.maximized =
      wp.showCmd == SW_SHOWMAXIMIZED || (wp.showCmd == SW_SHOWMINIMIZED && (wp.flags & WPF_RESTORETOMAXIMIZED));
  for (HWND list : lists) {
    const int count = Header_GetItemCount(ListView_GetHeader(list));
    for (int c = 0; c < count; ++c) placement.columns.push_back(ListView_GetColumnWidth(list, c));
  }
  SavePlacement(name_, placement);
}

}  // namespace qm::ui
