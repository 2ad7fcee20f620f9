// The executors by catalogue index: what the dispatcher runs. (The
// configuration editors are the dialogs layer's: ui/editors.h.)
#pragma once

#include <cstdint>

namespace qm {

class QmTaskBridge;
class TQMPluginParams;

// Runs the step; the step's Boolean result.
using ActionRoutine = bool (*)(QmTaskBridge& task, TQMPluginParams& params);

// The executor of catalogue index 0..12 (core/action_catalogue.h); null for
// any other index.
ActionRoutine ExecutorForIndex(int32_t index);

// Releases the Data Loop state saved for the parameter set's step, if any.
void StopDataLoopForStep(QmTaskBridge& task, TQMPluginParams& params);

}  // namespace qm
