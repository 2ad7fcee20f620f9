#include "task/job_table.h"

#include <cstdint>
#include <utility>

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

TSimpleCSVDataClass* AttachJobTable(const QmTaskBridge& task, std::unique_ptr<TSimpleCSVDataClass> table) {
  // From here on the registry vouches for the number, and frees the table at
  // unload if the task never gets to free it.
  TSimpleCSVDataClass* attached = LiveObjects::Instance().Keep(std::move(table));
  task.SetPrivateVariable(kJobTableVariable, UIntToStr(LiveObjects::NumberOf(attached)));
  return attached;
}

void FreeJobTable(const QmTaskBridge& task) {
  TSimpleCSVDataClass* table = GetJobTable(task);
  if (!table) return;
  task.SetPrivateVariable(kJobTableVariable, u"0");
  LiveObjects::Instance().Take(table).reset();
}

}  // namespace qm
