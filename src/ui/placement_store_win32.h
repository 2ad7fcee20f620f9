// Where the dialogs remember their size, position and list-column widths: a
// per-user INI file under the application-data folder, one section per dialog,
// read and written with the system's profile functions.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace qm::ui {

struct Placement {
  RECT frame{};              // the window's frame in screen coordinates
  std::vector<int> columns;  // list-column widths, "column0", "column1", ...
};

// The store's file: <application data>\qmcsv\dialogs.ini.
std::wstring PlacementStorePath();

// The dialog's saved placement, or false when there is none that can be used:
// no store, no section, a value that is not a plain number, a frame too small
// or not on any monitor.
bool LoadPlacement(const std::wstring& dialog, Placement& placement);
// Saves the placement; a store that cannot be written is left alone.
void SavePlacement(const std::wstring& dialog, const Placement& placement);

}  // namespace qm::ui
