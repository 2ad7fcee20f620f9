// CSV Save Data: writes the task's table to a host variable, a file, or both.
#pragma once

namespace qm {

class QmTaskBridge;
class TQMPluginParams;

bool ExecSaveData(QmTaskBridge& task, TQMPluginParams& params);

}  // namespace qm
