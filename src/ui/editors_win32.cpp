#include <array>

#include "ui/editors.h"

namespace qm::ui {

EditorRoutine EditorForIndex(int32_t index) {
  static constexpr std::array<EditorRoutine, 13> kEditors = {
      &ConfigureOpenData,      // 0 CSV Open Data
      &ConfigureGetDataInformation, // 1 CSV Get Data Information
      &ConfigureAddColumn,      // 2 CSV Add Column
      &ConfigureRemoveColumns,  // 3 CSV Remove Column
      &ConfigureSortByColumn,  // 4 CSV Sort by Column
      &ConfigureMoveColumn,     // 5 CSV Move Column
      &ConfigureReadCells,     // 6 CSV Read Cells
      &ConfigureWriteCells,    // 7 CSV Write Cells
      &ConfigureMergeData,     // 8 CSV Merge Data
      &ConfigureFilterData,    // 9 CSV Filter Data
      &ConfigureDataLoop,      // 10 CSV Data Loop
      &ConfigureRemoveDuplicates, // 11 CSV Remove Duplicates
      &ConfigureSaveData,      // 12 CSV Save Data
  };
  return index >= 0 && index < 13 ? kEditors[static_cast<size_t>(index)] : nullptr;
}

}  // namespace qm::ui
