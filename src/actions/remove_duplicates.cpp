#include "actions/remove_duplicates.h"

#include <string>
#include <vector>

#include "task/obtain_table.h"
#include "task/step_support.h"
#include "core/convert.h"
#include "core/step_keys.h"
#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "table/duplicate_rows.h"
#include "table/simple_csv_object.h"

namespace qm {

namespace {

// Drops the marked rows, keeping the order of the others. The kept records
// move up in place and the surplus goes from the end, so the work is linear
// however many rows go.
void RemoveMarkedRows(TSimpleCSVDataClass& table, const std::vector<bool>& marked) {
  TMemoryStrDataStorage& storage = table.Storage();
  const auto count = static_cast<int32_t>(marked.size());
  int32_t kept = 0;
  for (int32_t row = 0; row < count; ++row) {
    if (marked[static_cast<size_t>(row)]) continue;
    if (kept != row) storage.GetDataRecord(kept) = std::move(storage.GetDataRecord(row));
    ++kept;
  }
  for (int32_t row = count; row-- > kept;) table.RemoveRow(row);
}

}  // namespace

bool ExecRemoveDuplicates(QmTaskBridge& task, TQMPluginParams& params) {
  TSimpleCSVDataClass* table = ObtainTableOrReport(task, params);
  if (!table) return false;
  const bool caseSensitive = params.GetBool(keys::kDuplicatesCaseSensitive);
  const std::u16string varName(Trim(ReadExpanded(params, keys::kVarName)));

  int32_t deleted = 0;
  const std::vector<bool> duplicate = FindDuplicateRows(table->Storage().Records(), caseSensitive, deleted);
  if (deleted > 0) RemoveMarkedRows(*table, duplicate);

  if (!varName.empty()) SetVariable(varName, IntToStr(deleted));
  return true;
}

}  // namespace qm
