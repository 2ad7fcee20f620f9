#include "loop/filter_data.h"

#include <string_view>
#include <vector>

#include "task/obtain_table.h"
#include "task/step_support.h"
#include "loop/record_filter.h"
#include "loop/stored_conditions.h"
#include "boundary/plugin_params.h"
#include "core/step_keys.h"
#include "table/fetched_records.h"
#include "table/simple_csv_object.h"

namespace qm {

namespace {

// Drops the rows from `first` on whose flag in `keep` is false, keeping the
// order of the others: the kept records move up in place and the surplus goes
// from the end, where each removal costs nothing to the rows before it. Rows
// before `first` are not touched.
void DropRows(TSimpleCSVDataClass& table, int32_t first, const std::vector<bool>& keep) {
  TMemoryStrDataStorage& storage = table.Storage();
  const int32_t count = table.RecordCount();
  int32_t kept = first;
  for (int32_t row = first; row < count; ++row) {
    if (!keep[static_cast<size_t>(row)]) continue;
    if (kept != row) storage.GetDataRecord(kept) = std::move(storage.GetDataRecord(row));
    ++kept;
  }
  for (int32_t row = count; row-- > kept;) table.RemoveRow(row);
}

}  // namespace

void FilterRows(TSimpleCSVDataClass& table, TRecordFilterList& filters, bool reverse) {
  // Deciding every row first and compacting once gives the same table as
  // removing each failing row on the way down, without moving the rows after
  // it each time.
  TMemoryStrDataStorage& storage = table.Storage();
  const int32_t count = table.RecordCount();
  std::vector<bool> keep(static_cast<size_t>(count));
  int32_t row = count;
  try {
    // Walked from the last row up, each fetched ahead as ForEachFetched does.
    constexpr auto kAhead = static_cast<int32_t>(kFetchAhead);
    while (row-- > 0) {
      if (row >= kAhead) storage.GetDataRecord(row - kAhead).Prefetch();
      keep[static_cast<size_t>(row)] = filters.CheckFilters(storage.GetDataRecord(row), row) != reverse;
    }
  } catch (...) {
    // The walk down would have removed the rows after this one already.
    DropRows(table, row + 1, keep);
    throw;
  }
  DropRows(table, 0, keep);
}

bool ExecFilterData(QmTaskBridge& task, TQMPluginParams& params) {
  TSimpleCSVDataClass* table = ObtainTableOrReport(task, params);
  if (!table) return false;
  const bool reverse = params.GetBool(keys::kReverseMode);
  TRecordFilterList filters;
  filters.SetOrFilterMode(params.GetBool(keys::kConditionMode));
  ForEachStoredCondition(params, [&](std::u16string_view line) { filters.AddFilter(line); });
  FilterRows(*table, filters, reverse);
  return true;
}

}  // namespace qm
