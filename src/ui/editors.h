// The configuration editors by catalogue index: what the dispatcher runs when
// the host asks to configure a step. The native build has no dialogs.
#pragma once

#include <cstdint>

namespace qm {

class TQMPluginParams;

namespace ui {

// Runs an editor on the step's block; true when the user confirmed it (the
// block then holds what the editor wrote).
using EditorRoutine = bool (*)(TQMPluginParams& params);

// The editor of catalogue index 0..12; null where there is none.
EditorRoutine EditorForIndex(int32_t index);

bool ConfigureOpenData(TQMPluginParams& params);
bool ConfigureGetDataInformation(TQMPluginParams& params);
bool ConfigureAddColumn(TQMPluginParams& params);
bool ConfigureRemoveColumns(TQMPluginParams& params);
bool ConfigureSortByColumn(TQMPluginParams& params);
bool ConfigureMoveColumn(TQMPluginParams& params);
bool ConfigureReadCells(TQMPluginParams& params);
bool ConfigureWriteCells(TQMPluginParams& params);
bool ConfigureMergeData(TQMPluginParams& params);
bool ConfigureFilterData(TQMPluginParams& params);
bool ConfigureDataLoop(TQMPluginParams& params);
bool ConfigureRemoveDuplicates(TQMPluginParams& params);
bool ConfigureSaveData(TQMPluginParams& params);

}  // namespace ui
}  // namespace qm
