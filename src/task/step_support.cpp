#include "task/step_support.h"

#include "boundary/host_services.h"
#include "boundary/param_parser.h"
#include "boundary/task_bridge.h"
#include "core/convert.h"
#include "core/step_keys.h"

namespace qm {

void ReportFailure(const QmTaskBridge& task, uint32_t code, std::u16string_view message) {
  ReportError(static_cast<uint32_t>(task.TaskId()), code, message);
  ForEachNonEmptyLine(message, [&task](std::u16string_view line) { LogText(itError, line, &task); });
}

std::u16string ReadExpanded(const TQMParamParser& params, const keys::StepKey& key) {
  return ExpandVariables(params.GetString(key));
}

std::u16string ReadExpanded(const TQMParamParser& params, const keys::StepKey& key, int32_t index) {
  return ExpandVariables(params.GetString(key, index));
}

std::u16string_view ReadExpandedView(const TQMParamParser& params, const keys::StepKey& key, std::u16string& room) {
  const std::u16string_view text = params.GetStringView(key.name, key.fallback);
  if (!Contains(text, u'{')) return text;
  room = ExpandVariables(text);
  return room;
}

}  // namespace qm
