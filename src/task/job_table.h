// The task's one table, found through the task-private variable
// "$CSV_OBJECT$", which holds the table object's identity as decimal text.
#pragma once

#include <memory>

namespace qm {

class QmTaskBridge;
class TSimpleCSVDataClass;

// The attached table, or null ("0", empty, absent, malformed, or a number that
// names no live table: no table).
TSimpleCSVDataClass* GetJobTable(const QmTaskBridge& task);
// Attaches a table to a task that has none and returns it. LiveObjects keeps
// it from here on: it is freed by the job stop, or at unload at the latest.
TSimpleCSVDataClass* AttachJobTable(const QmTaskBridge& task, std::unique_ptr<TSimpleCSVDataClass> table);
// The job-stop clean-up: detaches and destroys the table, if there is one.
void FreeJobTable(const QmTaskBridge& task);

}  // namespace qm
