// CSV Remove Duplicates: deletes repeated rows, keeping the last of each set.
#pragma once

namespace qm {

class QmTaskBridge;
class TQMPluginParams;

bool ExecRemoveDuplicates(QmTaskBridge& task, TQMPluginParams& params);

}  // namespace qm
