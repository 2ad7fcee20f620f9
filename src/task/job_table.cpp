#include "task/job_table.h"

#include <cstdint>

#include "core/convert.h"
#include "boundary/task_bridge.h"
#include "table/simple_csv_object.h"

namespace qm {

namespace {
constexpr std::u16string_view kJobTableVariable = u"$CSV_OBJECT$";
}

TSimpleCSVDataClass* GetJobTable(const QmTaskBridge& task) {
  uint64_t identity = 0;
  if (!TryStrToUInt64(task.GetPrivateVariable(kJobTableVariable), identity) || identity == 0) return nullptr;
  return reinterpret_cast<TSimpleCSVDataClass*>(static_cast<uintptr_t>(identity));
}

void SetJobTable(const QmTaskBridge& task, TSimpleCSVDataClass* table) {
  task.SetPrivateVariable(kJobTableVariable, UIntToStr(reinterpret_cast<uintptr_t>(table)));
}

void FreeJobTable(const QmTaskBridge& task) {
  TSimpleCSVDataClass* table = GetJobTable(task);
  if (!table) return;
  SetJobTable(task, nullptr);
  delete table;
}

}  // namespace qm
