// CSV Move Column: moves one column, name and cells, to another position.
#pragma once

namespace qm {

class QmTaskBridge;
class TQMPluginParams;

bool ExecMoveColumn(QmTaskBridge& task, TQMPluginParams& params);

}  // namespace qm
