// CSV Add Column: appends or inserts one named column, filled for every record.
#pragma once

namespace qm {

class QmTaskBridge;
class TQMPluginParams;

bool ExecAddColumn(QmTaskBridge& task, TQMPluginParams& params);

}  // namespace qm
