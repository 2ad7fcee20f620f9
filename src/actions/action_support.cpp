#include "actions/action_support.h"

#include <string>

#include "plugin/host_services.h"
#include "plugin/param_parser.h"
#include "plugin/task_bridge.h"
#include "table/csv_source_settings.h"

namespace qm {

void ReportFailure(const QmTaskBridge& task, uint32_t code, std::u16string_view message) {
  ReportError(static_cast<uint32_t>(task.TaskId()), code, message);
  ForEachNonEmptyLine(message, [&task](std::u16string_view line) { LogText(itError, line, &task); });
}

TSimpleCSVDataClass* ObtainTableOrReport(const QmTaskBridge& task, const TQMParamParser& params) {
  TSimpleCSVDataClass* table = nullptr;
  uint32_t code = 0;
  std::u16string message;
  if (!ObtainJobTable(task, params, table, code, message)) {
    ReportFailure(task, code, message);
    return nullptr;
  }
  return table;
}

std::u16string ReadExpanded(const TQMParamParser& params, std::u16string_view key, std::u16string_view fallback) {
  return ExpandVariables(params.GetStringDef(key, fallback));
}

}  // namespace qm
