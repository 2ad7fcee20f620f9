#include "actions/add_column.h"

#include <string>

#include "task/obtain_table.h"
#include "task/step_support.h"
#include "core/convert.h"
#include "boundary/plugin_params.h"
#include "table/simple_csv_object.h"

namespace qm {

namespace {

enum : uint32_t { kInsertRefused = 4 };

// Where the column goes, counted from 0; -1 appends. The index is not
// checked here: the table appends for any index below 0 or past the last
// column, so 0, a non-number and a number past the end all append.
int32_t InsertionIndex(const TQMPluginParams& params) {
  if (params.GetBoolDef(u"totheend", true)) return -1;
  return ToTableIndex(StrToIntDef(ReadExpanded(params, u"position"), -1));
}

}  // namespace

bool ExecAddColumn(QmTaskBridge& task, TQMPluginParams& params) {
  TSimpleCSVDataClass* table = ObtainTableOrReport(task, params);
  if (!table) return false;
  const int32_t index = InsertionIndex(params);
  const std::u16string name(Trim(ReadExpanded(params, u"columnname", u"New field")));
  // Any fill code the table does not know fills with empty texts.
  const auto fill = static_cast<ColumnFill>(params.GetIntegerDef(u"fillmode", 0));
  const std::u16string value = ReadExpanded(params, u"columnvalue");
  if (!table->InsertColumn(index, fill, name, value)) {
    ReportFailure(task, kInsertRefused, table->LastError());
    return false;
  }
  return true;
}

}  // namespace qm
