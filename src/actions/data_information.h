// CSV Get Data Information: the table's record and column counts into host variables.
#pragma once

namespace qm {

class QmTaskBridge;
class TQMPluginParams;

bool ExecDataInformation(QmTaskBridge& task, TQMPluginParams& params);

}  // namespace qm
