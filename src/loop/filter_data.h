// CSV Filter Data: deletes the rows of the task's table that fail its
// conditions, or with reversemode those that pass them.
#pragma once

namespace qm {

class QmTaskBridge;
class TQMPluginParams;
class TRecordFilterList;
class TSimpleCSVDataClass;

bool ExecFilterData(QmTaskBridge& task, TQMPluginParams& params);

// Removes each row whose CheckFilters result (inverted when `reverse`) is
// false. Rows are tested from the last one up. When a condition raises on a
// row, the rows after it have already been dealt with and stay removed; that
// row and the ones before it are untouched, and the error leaves as it came.
// Linear in the number of rows however many are removed.
void FilterRows(TSimpleCSVDataClass& table, TRecordFilterList& filters, bool reverse);

}  // namespace qm
