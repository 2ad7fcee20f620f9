#include "plugin/action_table.h"

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
#include "core/action_catalogue.h"
#include "loop/data_loop.h"
#include "loop/filter_data.h"

namespace qm {

ActionRoutine ExecutorForIndex(int32_t index) {
  if (index < 0 || index >= kActionCount) return nullptr;
  // By name, not by position: the catalogue keeps the order, and a missing
  // action fails to compile.
  switch (static_cast<Action>(index)) {
    case Action::OpenData: return &ExecOpenData;
    case Action::DataInformation: return &ExecDataInformation;
    case Action::AddColumn: return &ExecAddColumn;
    case Action::RemoveColumns: return &ExecRemoveColumns;
    case Action::SortByColumn: return &ExecSortByColumn;
    case Action::MoveColumn: return &ExecMoveColumn;
    case Action::ReadCells: return &ExecReadCells;
    case Action::WriteCells: return &ExecWriteCells;
    case Action::MergeData: return &ExecMergeData;
    case Action::FilterData: return &ExecFilterData;
    case Action::DataLoop: return &ExecDataLoop;
    case Action::RemoveDuplicates: return &ExecRemoveDuplicates;
    case Action::SaveData: return &ExecSaveData;
  }
  return nullptr;
}

void StopDataLoopForStep(QmTaskBridge& task, TQMPluginParams& params) { StopDataLoop(task, params); }

}  // namespace qm
