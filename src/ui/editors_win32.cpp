#include "core/action_catalogue.h"
#include "ui/editors.h"

namespace qm::ui {

EditorRoutine EditorForIndex(int32_t index) {
  if (index < 0 || index >= kActionCount) return nullptr;
  // By name, not by position: the catalogue keeps the order, and a missing
  // action fails to compile.
  switch (static_cast<Action>(index)) {
    case Action::OpenData: return &ConfigureOpenData;
    case Action::DataInformation: return &ConfigureGetDataInformation;
    case Action::AddColumn: return &ConfigureAddColumn;
    case Action::RemoveColumns: return &ConfigureRemoveColumns;
    case Action::SortByColumn: return &ConfigureSortByColumn;
    case Action::MoveColumn: return &ConfigureMoveColumn;
    case Action::ReadCells: return &ConfigureReadCells;
    case Action::WriteCells: return &ConfigureWriteCells;
    case Action::MergeData: return &ConfigureMergeData;
    case Action::FilterData: return &ConfigureFilterData;
    case Action::DataLoop: return &ConfigureDataLoop;
    case Action::RemoveDuplicates: return &ConfigureRemoveDuplicates;
    case Action::SaveData: return &ConfigureSaveData;
  }
  return nullptr;
}

}  // namespace qm::ui
