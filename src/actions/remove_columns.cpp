#include "actions/remove_columns.h"

#include <algorithm>
#include <string>
#include <vector>

#include "task/obtain_table.h"
#include "task/step_support.h"
#include "core/convert.h"
#include "core/errors.h"
#include "core/messages.h"
#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "boundary/task_bridge.h"
#include "core/delimited_text.h"
#include "core/step_keys.h"
#include "table/simple_csv_object.h"

namespace qm {

namespace {

enum : uint32_t { kListEmpty = 4 };

// The message of a skipped column followed by its number in parentheses.
constexpr std::u16string_view kNumberedMessage = u"%s (%d)";

struct ColumnItem {
  std::u16string text;
  int32_t order;  // the item's value; 0 for an item that is not a number
};

// The items as comma text (commas and blanks separate, double quotes keep
// blanks), highest number first so that removing one column never moves a
// column still to be removed. Equal numbers keep their listed order.
std::vector<ColumnItem> ColumnItems(std::u16string_view list) {
  std::vector<ColumnItem> items;
  for (auto& text : SplitDelimited(list, kCommaText)) {
    const int32_t order = StrToIntDef(text, 0);
    items.push_back({std::move(text), order});
  }
  std::stable_sort(items.begin(), items.end(),
                   [](const ColumnItem& a, const ColumnItem& b) { return a.order > b.order; });
  return items;
}

}  // namespace

// The most forgiving action: a bad entry is logged as a warning and skipped,
// and the step succeeds when at least one column went.
bool ExecRemoveColumns(QmTaskBridge& task, TQMPluginParams& params) {
  TSimpleCSVDataClass* table = ObtainTableOrReport(task, params);
  if (!table) return false;
  const std::vector<ColumnItem> items = ColumnItems(ReadExpanded(params, keys::kRemoveColumns));
  if (items.empty()) {
    ReportFailure(task, kListEmpty, msg::kListEmpty);
    return false;
  }
  bool removed = false;
  for (const ColumnItem& item : items) {
    int32_t number = 0;
    try {
      number = StrToInt(item.text);
    } catch (const EConvertError& e) {
      LogText(itWarning, e.Message(), &task);
      continue;
    }
    const int32_t index = ToTableIndex(number);
    // The column one past the last passes this check on purpose; the table
    // refuses it below, and that refusal is what gets logged for it.
    if (index < 0 || index > table->FieldCount()) {
      LogText(itWarning, Format(kNumberedMessage, {msg::kColumnOutOfRange, IntToStr(number)}), &task);
    }
    if (table->RemoveColumn(index)) {
      removed = true;
    } else {
      // The table's own complaint goes to the general log, not the task's.
      ForEachNonEmptyLine(table->LastError(), [](std::u16string_view line) { LogText(itWarning, line); });
    }
  }
  return removed;
}

}  // namespace qm
