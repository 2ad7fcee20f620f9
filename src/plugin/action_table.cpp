#include "plugin/action_table.h"

#include <array>
#include <cstddef>

#include "actions/add_column.h"
#include "actions/data_information.h"
#include "actions/merge_data.h"
#include "actions/move_column.h"
#include "actions/open_data.h"
#include "actions/read_write_cells.h"
#include "actions/remove_columns.h"
#include "actions/remove_duplicates.h"
#include "actions/save_data.h"
#include "actions/sort_by_column.h"
#include "loop/data_loop.h"
#include "loop/filter_data.h"

namespace qm {

namespace {

// Index order is the catalogue's: Open, Information, Add Column, Remove
// Column, Sort, Move Column, Read Cells, Write Cells, Merge, Filter, Data Loop,
// Remove Duplicates, Save.
const std::array<ActionRoutines, kActionCount> kRoutines = {{
    {nullptr, &ExecOpenData},  // 0 CSV Open Data
    {nullptr, &ExecDataInformation},  // 1 CSV Get Data Information
    {nullptr, &ExecAddColumn},  // 2 CSV Add Column
    {nullptr, &ExecRemoveColumns},  // 3 CSV Remove Column
    {nullptr, &ExecSortByColumn},  // 4 CSV Sort by Column
    {nullptr, &ExecMoveColumn},  // 5 CSV Move Column
    {nullptr, &ExecReadCells},  // 6 CSV Read Cells
    {nullptr, &ExecWriteCells},  // 7 CSV Write Cells
    {nullptr, &ExecMergeData},  // 8 CSV Merge Data
    {nullptr, &ExecFilterData},  // 9 CSV Filter Data
    {nullptr, &ExecDataLoop},  // 10 CSV Data Loop
    {nullptr, &ExecRemoveDuplicates},  // 11 CSV Remove Duplicates
    {nullptr, &ExecSaveData},  // 12 CSV Save Data
}};

const ActionRoutines kNone{};

}  // namespace

const ActionRoutines& RoutinesForIndex(int32_t index) {
  return index >= 0 && index < kActionCount ? kRoutines[static_cast<size_t>(index)] : kNone;
}

void StopDataLoopForStep(QmTaskBridge& task, TQMPluginParams& params) { StopDataLoop(task, params); }

}  // namespace qm
