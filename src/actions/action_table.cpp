#include "actions/action_table.h"

#include <array>
#include <cstddef>

#include "actions/open_data.h"

namespace qm {

namespace {

// Index order is the catalogue's: Open, Information, Add Column, Remove
// Column, Sort, Move Column, Read Cells, Write Cells, Merge, Filter, Data Loop,
// Remove Duplicates, Save.
const std::array<ActionRoutines, kActionCount> kRoutines = {{
    {nullptr, &ExecOpenData},  // 0 CSV Open Data
    {},  // 1 CSV Get Data Information
    {},  // 2 CSV Add Column
    {},  // 3 CSV Remove Column
    {},  // 4 CSV Sort by Column
    {},  // 5 CSV Move Column
    {},  // 6 CSV Read Cells
    {},  // 7 CSV Write Cells
    {},  // 8 CSV Merge Data
    {},  // 9 CSV Filter Data
    {},  // 10 CSV Data Loop
    {},  // 11 CSV Remove Duplicates
    {},  // 12 CSV Save Data
}};

const ActionRoutines kNone{};

}  // namespace

const ActionRoutines& RoutinesForIndex(int32_t index) {
  return index >= 0 && index < kActionCount ? kRoutines[static_cast<size_t>(index)] : kNone;
}

void StopDataLoopForStep(QmTaskBridge&, TQMPluginParams&) {}

}  // namespace qm
