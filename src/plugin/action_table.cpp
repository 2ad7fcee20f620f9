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
const std::array<ActionRoutine, kActionCount> kRoutines = {
    &ExecOpenData,  // 0 CSV Open Data
    &ExecDataInformation,  // 1 CSV Get Data Information
    &ExecAddColumn,  // 2 CSV Add Column
    &ExecRemoveColumns,  // 3 CSV Remove Column
    &ExecSortByColumn,  // 4 CSV Sort by Column
    &ExecMoveColumn,  // 5 CSV Move Column
    &ExecReadCells,  // 6 CSV Read Cells
    &ExecWriteCells,  // 7 CSV Write Cells
    &ExecMergeData,  // 8 CSV Merge Data
    &ExecFilterData,  // 9 CSV Filter Data
    &ExecDataLoop,  // 10 CSV Data Loop
    &ExecRemoveDuplicates,  // 11 CSV Remove Duplicates
    &ExecSaveData,  // 12 CSV Save Data
};

}  // namespace

ActionRoutine ExecutorForIndex(int32_t index) {
  return index >= 0 && index < kActionCount ? kRoutines[static_cast<size_t>(index)] : nullptr;
}

void StopDataLoopForStep(QmTaskBridge& task, TQMPluginParams& params) { StopDataLoop(task, params); }

}  // namespace qm
