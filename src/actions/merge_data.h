// CSV Merge Data: appends the records of a second file or text to the task's table.
#pragma once

namespace qm {

class QmTaskBridge;
class TQMPluginParams;

bool ExecMergeData(QmTaskBridge& task, TQMPluginParams& params);

}  // namespace qm
