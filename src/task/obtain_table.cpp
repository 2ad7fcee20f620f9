#include "task/obtain_table.h"

#include <memory>

#include "core/messages.h"
#include "table/simple_csv_object.h"
#include "task/job_table.h"
#include "task/step_settings.h"
#include "task/step_support.h"

namespace qm {

bool ObtainJobTable(const QmTaskBridge& task, const TQMParamParser& params, TSimpleCSVDataClass*& table, uint32_t& code,
                    std::u16string& message) {
  message.clear();
  table = nullptr;
  const TCSVSourceSettings source = ReadSourceSettings(params);
  const TCSVFormatSettings format = ReadFormatSettings(params);
  TSimpleCSVDataClass* t = GetJobTable(task);
  if (!t) {
    if (source.Source == CsvSource::PreviousAction) {
      code = kObtainNoTable;
      message = msg::kDataNotDefined;
      return false;
    }
    // Attached before it is loaded: it stays with the task even if the load fails.
    t = AttachJobTable(task, std::make_unique<TSimpleCSVDataClass>());
  }
  if (source.Source != CsvSource::PreviousAction && !LoadFromSource(*t, source, format)) {
    code = source.Source == CsvSource::File ? kObtainFileFailed : kObtainTextFailed;
    message = t->LastError();
    return false;
  }
  table = t;
  return true;
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

}  // namespace qm
