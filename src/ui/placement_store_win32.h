// Where the dialogs remember their size, position and list-column widths: a
// per-user INI file under the application-data folder, one section per dialog,
// read and written with the system's profile functions.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace qm::ui {

struct Placement {
  RECT frame{};              // the window's normal (restored) frame in screen coordinates
  bool maximized = false;    // closed maximized: reopens so, restoring to `frame`
  std::vector<int> columns;  // list-column widths, "column0", "column1", ...
};

// The store's file: <application data>\qmcsv\dialogs.ini.
std::wstring PlacementStorePath();

// The dialog's saved placement, or false when there is none that can be used:
// no store, no section, a value that is not a plain number, a frame too
// small. A frame that does not lie whole on a monitor's work area (its
// monitor gone, or partly off screen) is moved onto the nearest one, and
// made no larger than its work area.
bool LoadPlacement(const std::wstring& dialog, Placement& placement);
// Saves the placement; a store that cannot be written is left alone.
void SavePlacement(const std::wstring& dialog, const Placement& placement);

}  // namespace qm::ui
