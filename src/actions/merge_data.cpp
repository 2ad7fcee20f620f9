#include "actions/merge_data.h"

#include "task/step_support.h"
#include "core/messages.h"
#include "core/step_keys.h"
#include "boundary/plugin_params.h"
#include "task/step_settings.h"
#include "task/job_table.h"
#include "table/simple_csv_object.h"

namespace qm {

namespace {

// Merge's own codes: unlike the obtain-table routine, a file failure is 3 and
// a text failure 4.
enum : uint32_t {
  kNoTable = 1,
  kNoSource = 2,
  kFileFailed = 3,
  kTextFailed = 4,
  kColumnCountDiffers = 5,
  kAddRowFailed = 6,
};

}  // namespace

bool ExecMergeData(QmTaskBridge& task, TQMPluginParams& params) {
  // Merging adds to an open table; it never creates the task's table.
  TSimpleCSVDataClass* target = GetJobTable(task);
  if (!target) {
    ReportFailure(task, kNoTable, msg::kDataNotDefined);
    return false;
  }
  // The data to add is read into a table of its own that is never attached
  // to the task and goes away with this call.
  TSimpleCSVDataClass added;
  const TCSVSourceSettings source = ReadSourceSettings(params);
  const TCSVFormatSettings format = ReadFormatSettings(params);
  if (source.Source == CsvSource::PreviousAction) {
    ReportFailure(task, kNoSource, msg::kSourceNotDefined);
    return false;
  }
  if (!LoadFromSource(added, source, format)) {
    ReportFailure(task, source.Source == CsvSource::File ? kFileFailed : kTextFailed, added.LastError());
    return false;
  }

  // Only the numbers of columns are compared; names are never matched.
  if (target->FieldCount() != added.FieldCount()) {
    if (!params.GetBool(keys::kAjustColumns)) {
      ReportFailure(task, kColumnCountDiffers, msg::kColumnCountDiffers);
      return false;
    }
    // Empty unnamed columns added at the end, or the last ones dropped: by
    // position, in one pass.
    added.Storage().SetFieldCount(target->FieldCount());
  }
  // The added table goes away with this call: its rows move over with their
  // memory instead of being copied.
  if (!target->TakeRows(added)) {
    ReportFailure(task, kAddRowFailed, target->LastError());
    return false;
  }
  return true;
}

}  // namespace qm
