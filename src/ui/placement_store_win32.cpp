#include "ui/placement_store_win32.h"

#include <shlobj.h>

#include <algorithm>
#include <cwchar>

namespace qm::ui {

namespace {

constexpr int kMaxColumns = 16;

// A whole number written as the store writes it; anything else is corrupt.
bool ReadNumber(const std::wstring& path, const std::wstring& section, const wchar_t* key, int& value) {
  wchar_t text[32] = {};
  const DWORD n = GetPrivateProfileStringW(section.c_str(), key, L"", text, 32, path.c_str());
  if (n == 0 || n >= 31) return false;
  wchar_t* end = nullptr;
  const long parsed = std::wcstol(text, &end, 10);
  if (*end != 0 || parsed < -100000 || parsed > 100000) return false;
  value = static_cast<int>(parsed);
  return true;
}

void WriteNumber(const std::wstring& path, const std::wstring& section, const wchar_t* key, int value) {
  WritePrivateProfileStringW(section.c_str(), key, std::to_wstring(value).c_str(), path.c_str());
}

std::wstring ColumnKey(int index) { return L"column" + std::to_wstring(index); }

// Moves `frame` onto the work area of the monitor nearest to it, keeping its
// size where the area allows.
void FitOnMonitor(RECT& frame) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  if (!GetMonitorInfoW(MonitorFromRect(&frame, MONITOR_DEFAULTTONEAREST), &monitor)) return;
  const RECT& work = monitor.rcWork;
  const LONG width = std::min(frame.right - frame.left, work.right - work.left);
  const LONG height = std::min(frame.bottom - frame.top, work.bottom - work.top);
  const LONG left = std::clamp(frame.left, work.left, work.right - width);
  const LONG top = std::clamp(frame.top, work.top, work.bottom - height);
  frame = RECT{left, top, left + width, top + height};
}

}  // namespace

std::wstring PlacementStorePath() {
  PWSTR folder = nullptr;
  std::wstring path;
  if (SUCCEEDED(SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &folder))) path = folder;
  CoTaskMemFree(folder);
  if (path.empty()) return {};
  path += L"\\qmcsv";
  CreateDirectoryW(path.c_str(), nullptr);
  return path + L"\\dialogs.ini";
}

bool LoadPlacement(const std::wstring& dialog, Placement& placement) {
  const std::wstring path = PlacementStorePath();
  if (path.empty()) return false;
  int left = 0, top = 0, width = 0, height = 0;
  if (!ReadNumber(path, dialog, L"left", left) || !ReadNumber(path, dialog, L"top", top) ||
      !ReadNumber(path, dialog, L"width", width) || !ReadNumber(path, dialog, L"height", height)) {
    return false;
  }
  if (width < 50 || height < 50) return false;
  int maximized = 0;  // absent (a store from before it was kept): not maximized
  placement.maximized = ReadNumber(path, dialog, L"maximized", maximized) && maximized != 0;
  placement.frame = RECT{left, top, left + width, top + height};
  FitOnMonitor(placement.frame);
  placement.columns.clear();
  for (int i = 0, width = 0; i < kMaxColumns && ReadNumber(path, dialog, ColumnKey(i).c_str(), width); ++i) {
    if (width < 0) break;
    placement.columns.push_back(width);
  }
  return true;
}

void SavePlacement(const std::wstring& dialog, const Placement& placement) {
  const std::wstring path = PlacementStorePath();
  if (path.empty()) return;
  const RECT& r = placement.frame;
  WriteNumber(path, dialog, L"left", r.left);
  WriteNumber(path, dialog, L"top", r.top);
  WriteNumber(path, dialog, L"width", r.right - r.left);
  WriteNumber(path, dialog, L"height", r.bottom - r.top);
  WriteNumber(path, dialog, L"maximized", placement.maximized ? 1 : 0);
  for (size_t i = 0; i < placement.columns.size() && i < kMaxColumns; ++i) {
    WriteNumber(path, dialog, ColumnKey(static_cast<int>(i)).c_str(), placement.columns[i]);
  }
}

}  // namespace qm::ui
