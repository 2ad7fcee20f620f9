#include "actions/move_column.h"

#include "task/obtain_table.h"
#include "task/step_support.h"
#include "core/convert.h"
#include "core/messages.h"
#include "core/step_keys.h"
#include "boundary/plugin_params.h"
#include "table/simple_csv_object.h"

namespace qm {

namespace {

// Note the order: here 4 is the range error and 5 the table's refusal, the
// other way round from Read and Write Cells. Tasks test these codes, so they
// stay as they are.
enum : uint32_t { kOutOfRange = 4, kMoveRefused = 5 };

}  // namespace

bool ExecMoveColumn(QmTaskBridge& task, TQMPluginParams& params) {
  TSimpleCSVDataClass* table = ObtainTableOrReport(task, params);
  if (!table) return false;
  // A number that does not convert reads as 0 and fails the range check.
  const int32_t from = StrToIntDef(ReadExpanded(params, keys::kFromPos), 0);
  const int32_t to = StrToIntDef(ReadExpanded(params, keys::kToPos), 0);
  if (from < 1 || from > table->FieldCount() || to < 1 || to > table->FieldCount()) {
    ReportFailure(task, kOutOfRange, msg::kColumnOutOfRange);
    return false;
  }
  if (!table->MoveColumn(from - 1, to - 1)) {
    ReportFailure(task, kMoveRefused, table->LastError());
    return false;
  }
  return true;
}

}  // namespace qm
