#include "actions/add_column.h"

#include <string>

#include "task/obtain_table.h"
#include "task/step_support.h"
#include "core/convert.h"
#include "core/step_keys.h"
#include "boundary/plugin_params.h"
#include "table/simple_csv_object.h"

namespace qm {

namespace {

enum : uint32_t { kInsertRefused = 4 };

// Where the column goes, counted from 0; -1 appends. The index is not
// checked here: the table appends for any index below 0 or past the last
// column, so 0, a non-number and a number past the end all append.
int32_t InsertionIndex(const TQMPluginParams& params) {
  if (params.GetBool(keys::kToTheEnd)) return -1;
  return ToTableIndex(StrToIntDef(ReadExpanded(params, keys::kPosition), -1));
}

}  // namespace

bool ExecAddColumn(QmTaskBridge& task, TQMPluginParams& params) {
  TSimpleCSVDataClass* table = ObtainTableOrReport(task, params);
  if (!table) return false;
  const int32_t index = InsertionIndex(params);
  const std::u16string name(Trim(ReadExpanded(params, keys::kColumnName)));
  // Any fill code the table does not know fills with empty texts.
  const auto fill = static_cast<ColumnFill>(params.GetInteger(keys::kFillMode));
  const std::u16string value = ReadExpanded(params, keys::kColumnValue);
  if (!table->InsertColumn(index, fill, name, value)) {
    ReportFailure(task, kInsertRefused, table->LastError());
    return false;
  }
  return true;
}

}  // namespace qm
