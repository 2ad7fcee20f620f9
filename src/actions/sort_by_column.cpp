#include "actions/sort_by_column.h"

#include "task/obtain_table.h"
#include "task/step_support.h"
#include "core/convert.h"
#include "core/messages.h"
#include "core/step_keys.h"
#include "boundary/plugin_params.h"
#include "table/simple_csv_object.h"

namespace qm {

namespace {

enum : uint32_t { kSortRefused = 4, kOutOfRange = 5 };

}  // namespace

bool ExecSortByColumn(QmTaskBridge& task, TQMPluginParams& params) {
  TSimpleCSVDataClass* table = ObtainTableOrReport(task, params);
  if (!table) return false;
  // A column that is not a number travels to the host as a conversion error.
  const int32_t column = StrToInt(ReadExpanded(params, keys::kSortColumn));
  const bool descending = params.GetBool(keys::kSortDirection);
  const bool numeric = params.GetBool(keys::kSortMode);
  const bool caseSensitive = params.GetBool(keys::kSortCaseSensitive);
  if (column < 1 || column > table->FieldCount()) {
    ReportFailure(task, kOutOfRange, msg::kColumnOutOfRange);
    return false;
  }
  if (!table->SortByField(column - 1, caseSensitive, descending, numeric)) {
    ReportFailure(task, kSortRefused, table->LastError());
    return false;
  }
  return true;
}

}  // namespace qm
