#include "actions/save_data.h"

#include <exception>
#include <string>

#include "task/step_support.h"
#include "core/errors.h"
#include "core/messages.h"
#include "platform/file_system.h"
#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "task/step_settings.h"
#include "task/step_settings.h"
#include "task/job_table.h"
#include "table/simple_csv_object.h"

namespace qm {

namespace {

enum : uint32_t { kNoTable = 1, kRenderFailed = 2 };

}  // namespace

bool ExecSaveData(QmTaskBridge& task, TQMPluginParams& params) {
  const TCSVTargetSettings target = ReadTargetSettings(params);
  const TCSVFormatSettings format = ReadFormatSettings(params);

  // Saving never loads: it writes what the task's earlier steps left.
  TSimpleCSVDataClass* table = GetJobTable(task);
  if (!table) {
    ReportFailure(task, kNoTable, msg::kDataNotDefined);
    return false;
  }
  // Changing the format changes the task's table itself, so every later step
  // that writes CSV text from it keeps using the new format.
  if (!target.KeepFormat) {
    table->SetDelimiter(format.Delimiter);
    table->SetQuoteChar(format.QuoteChar);
    table->SetStrictDelimiter(format.StrictDelimiter != 0);
  }
  if (target.VarName.empty() && target.FileName.empty()) return false;

  // The variable first: a file that cannot be written leaves it set.
  if (!target.VarName.empty()) {
    std::u16string text;
    if (!table->SaveToText(text)) {
      ReportFailure(task, kRenderFailed, table->LastError());
      return false;
    }
    SetVariable(target.VarName, text);
  }
  if (!target.FileName.empty()) {
    // A folder that cannot be made shows up as the file's own error below.
    ForceFolders(RemoveTrailingDelimiter(ExtractFileDir(target.FileName)));
    // The table is rendered straight into the file rather than into a list of
    // lines first. A file error travels on to the host; the only other way
    // rendering can fail is running out of memory, reported like any
    // rendering failure.
    try {
      table->WriteToFile(target.FileName, target.Encoding);
    } catch (const EFileError&) {
      throw;
    } catch (const std::exception& e) {
      ReportFailure(task, kRenderFailed, ExceptionText(e));
      return false;
    }
  }
  return true;
}

}  // namespace qm
