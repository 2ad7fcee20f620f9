// CSV Sort by Column: reorders the records by one column, as text or as numbers.
#pragma once

namespace qm {

class QmTaskBridge;
class TQMPluginParams;

bool ExecSortByColumn(QmTaskBridge& task, TQMPluginParams& params);

}  // namespace qm
