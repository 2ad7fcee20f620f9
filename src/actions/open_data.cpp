#include "actions/open_data.h"

#include "actions/action_support.h"
#include "plugin/plugin_params.h"

namespace qm {

// Loading attaches the table to the task; nothing else is logged or set.
bool ExecOpenData(QmTaskBridge& task, TQMPluginParams& params) { return ObtainTableOrReport(task, params) != nullptr; }

}  // namespace qm
