#include "actions/read_write_cells.h"

#include <string>

#include "task/obtain_table.h"
#include "task/step_support.h"
#include "core/convert.h"
#include "core/messages.h"
#include "core/step_keys.h"
#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "table/simple_csv_object.h"

namespace qm {

namespace {

enum : uint32_t { kCellRefused = 4, kOutOfRange = 5 };

}  // namespace

bool ExecReadWriteCells(QmTaskBridge& task, TQMPluginParams& params, bool write) {
  TSimpleCSVDataClass* table = ObtainTableOrReport(task, params);
  if (!table) return false;
  const int32_t count = params.GetInteger(keys::kCellCount);
  for (int32_t n = 0; n < count; ++n) {
    // A row or column that is not a number is the user's error and travels
    // to the host as it is.
    const int32_t row = StrToInt(ReadExpanded(params, keys::kRow, n));
    const int32_t column = StrToInt(ReadExpanded(params, keys::kCol, n));
    const std::u16string value = ReadExpanded(params, keys::kVal, n);
    if (row < 1 || row > table->RecordCount()) {
      ReportFailure(task, kOutOfRange, msg::kRowOutOfRange);
      return false;
    }
    if (column < 1 || column > table->FieldCount()) {
      ReportFailure(task, kOutOfRange, msg::kColumnOutOfRange);
      return false;
    }
    if (write) {
      if (!table->WriteCell(row - 1, column - 1, value)) {
        ReportFailure(task, kCellRefused, table->LastError());
        return false;
      }
    } else {
      std::u16string text;
      if (!table->ReadCell(row - 1, column - 1, text)) {
        ReportFailure(task, kCellRefused, table->LastError());
        return false;
      }
      SetVariable(value, text);
    }
  }
  return true;
}

bool ExecReadCells(QmTaskBridge& task, TQMPluginParams& params) { return ExecReadWriteCells(task, params, false); }

bool ExecWriteCells(QmTaskBridge& task, TQMPluginParams& params) { return ExecReadWriteCells(task, params, true); }

}  // namespace qm
