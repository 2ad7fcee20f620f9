// CSV Read Cells and CSV Write Cells: one executor for a list of single cells,
// told apart by the write flag.
#pragma once

namespace qm {

class QmTaskBridge;
class TQMPluginParams;

// Reads each listed cell into a host variable, or (write) sets it from an
// expanded text. Entries run in list order and the first failure stops the run.
bool ExecReadWriteCells(QmTaskBridge& task, TQMPluginParams& params, bool write);
bool ExecReadCells(QmTaskBridge& task, TQMPluginParams& params);
bool ExecWriteCells(QmTaskBridge& task, TQMPluginParams& params);

}  // namespace qm
