// CSV Remove Column: removes the listed columns; a bad entry is logged and skipped.
#pragma once

namespace qm {

class QmTaskBridge;
class TQMPluginParams;

bool ExecRemoveColumns(QmTaskBridge& task, TQMPluginParams& params);

}  // namespace qm
