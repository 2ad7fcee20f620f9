// The task's one table, found through the task-private variable
// "$CSV_OBJECT$", which holds the table object's identity as decimal text.
#pragma once

namespace qm {

class QmTaskBridge;
class TSimpleCSVDataClass;

// The attached table, or null ("0", empty, absent, malformed, or a number that
// names no live table: no table).
TSimpleCSVDataClass* GetJobTable(const QmTaskBridge& task);
// Attaches a table (null detaches, written as "0"). The plug-in owns it: an
// attached table is registered with LiveObjects and freed at unload at the
// latest.
void SetJobTable(const QmTaskBridge& task, TSimpleCSVDataClass* table);
// The job-stop clean-up: detaches and destroys the table, if there is one.
void FreeJobTable(const QmTaskBridge& task);

}  // namespace qm
