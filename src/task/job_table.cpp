#include "task/job_table.h"

#include <cstdint>

#include "core/convert.h"
#include "boundary/task_bridge.h"
#include "table/simple_csv_object.h"
#include "task/live_objects.h"

namespace qm {

namespace {
constexpr std::u16string_view kJobTableVariable = u"$CSV_OBJECT$";
}

TSimpleCSVDataClass* GetJobTable(const QmTaskBridge& task) {
  uint64_t number = 0;
  if (!TryStrToUInt64(task.ReadPrivateVariable(kJobTableVariable).View(), number)) return nullptr;
  return LiveObjects::Instance().Find<TSimpleCSVDataClass>(number);
}

void SetJobTable(const QmTaskBridge& task, TSimpleCSVDataClass* table) {
  // From here on the registry vouches for the number, and frees the table at
  // unload if the task never gets to free it.
  if (table) LiveObjects::Instance().Add(table);
  task.SetPrivateVariable(kJobTableVariable, UIntToStr(LiveObjects::NumberOf(table)));
}

void FreeJobTable(const QmTaskBridge& task) {
  TSimpleCSVDataClass* table = GetJobTable(task);
  if (!table) return;
  SetJobTable(task, nullptr);
  LiveObjects::Instance().Remove(table);
  delete table;
}

}  // namespace qm
