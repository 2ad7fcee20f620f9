#include "actions/data_information.h"

#include <string>

#include "task/obtain_table.h"
#include "task/step_support.h"
#include "core/convert.h"
#include "core/step_keys.h"
#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "table/simple_csv_object.h"

namespace qm {

bool ExecDataInformation(QmTaskBridge& task, TQMPluginParams& params) {
  TSimpleCSVDataClass* table = ObtainTableOrReport(task, params);
  if (!table) return false;
  // A blank name means the count is not wanted.
  const std::u16string recordCountVar(Trim(ReadExpanded(params, keys::kRecordCountVar)));
  const std::u16string colCountVar(Trim(ReadExpanded(params, keys::kColCountVar)));
  if (!recordCountVar.empty()) SetVariable(recordCountVar, IntToStr(table->RecordCount()));
  if (!colCountVar.empty()) SetVariable(colCountVar, IntToStr(table->FieldCount()));
  return true;
}

}  // namespace qm
