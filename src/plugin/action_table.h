// The action routines by catalogue index: what the dispatcher calls.
#pragma once

#include <cstdint>

namespace qm {

class QmTaskBridge;
class TQMPluginParams;

struct ActionRoutines {
  // Runs the step's dialog; true when the user confirmed it.
  bool (*configure)(TQMPluginParams& params) = nullptr;
  // Runs the step; the step's Boolean result.
  bool (*execute)(QmTaskBridge& task, TQMPluginParams& params) = nullptr;
};

inline constexpr int32_t kActionCount = 13;

// The routines of catalogue index 0..12; an empty entry for any other index
// (and for an action whose routine is not there).
const ActionRoutines& RoutinesForIndex(int32_t index);

// Releases the Data Loop state saved for the parameter set's step, if any.
void StopDataLoopForStep(QmTaskBridge& task, TQMPluginParams& params);

}  // namespace qm
