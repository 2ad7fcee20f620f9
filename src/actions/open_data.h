// CSV Open Data: reads a table from a file or typed text into the task.
#pragma once

namespace qm {

class QmTaskBridge;
class TQMPluginParams;

bool ExecOpenData(QmTaskBridge& task, TQMPluginParams& params);

}  // namespace qm
