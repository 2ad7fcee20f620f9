#include "actions/open_data.h"

#include "task/obtain_table.h"
#include "task/step_support.h"
#include "boundary/plugin_params.h"

namespace qm {

// Loading attaches the table to the task; nothing else is logged or set.
bool ExecOpenData(QmTaskBridge& task, TQMPluginParams& params) { return ObtainTableOrReport(task, params) != nullptr; }

}  // namespace qm
