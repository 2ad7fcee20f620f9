#include "loop/data_loop.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

#include "task/obtain_table.h"
#include "task/step_support.h"
#include "core/convert.h"
#include "loop/csv_loop.h"
#include "loop/stored_conditions.h"
#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "core/delimited_text.h"
#include "core/step_keys.h"
#include "table/record.h"
#include "table/simple_csv_object.h"

namespace qm {

namespace {

void AppendHex4(char16_t unit, std::u16string& out) {
  static constexpr char16_t kDigits[] = u"0123456789abcdef";
  out += u"\\u";
  for (int shift = 12; shift >= 0; shift -= 4) out += kDigits[(unit >> shift) & 0xF];
}

bool IsHighSurrogate(char16_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool IsLowSurrogate(char16_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

void AppendJsonString(std::u16string_view text, std::u16string& out) {
  out += u'"';
  for (size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    switch (c) {
      case u'"': out += u"\\\""; continue;
      case u'\\': out += u"\\\\"; continue;
      case u'\b': out += u"\\b"; continue;
      case u'\f': out += u"\\f"; continue;
      case u'\n': out += u"\\n"; continue;
      case u'\r': out += u"\\r"; continue;
      case u'\t': out += u"\\t"; continue;
      default: break;
    }
    if (c < 0x20) {
      AppendHex4(c, out);
    } else if (IsHighSurrogate(c) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      out += c;
      out += text[++i];
    } else if (IsHighSurrogate(c) || IsLowSurrogate(c)) {
      AppendHex4(c, out);
    } else {
      out += c;
    }
  }
  out += u'"';
}

// Writes the row's number from 1 as decimal text to `room` (kept from pass to pass).
void WriteRowNumber(int32_t row, std::u16string& room) {
  const int64_t number = int64_t{row} + 1;
  if (number <= 0) {
    room = IntToStr(number);
    return;
  }
  room.clear();
  for (int64_t rest = number; rest > 0; rest /= 10) room.push_back(static_cast<char16_t>(u'0' + rest % 10));
  std::reverse(room.begin(), room.end());
}

// The first pass: the loop over the task's table with the step's conditions,
// saved in the step's slot. Null after reporting when there is no table; a
// bad condition raises before anything is saved.
TCSVLoopClass* StartLoop(QmTaskBridge& task, const TQMPluginParams& params) {
  TSimpleCSVDataClass* table = ObtainTableOrReport(task, params);
  if (!table) return nullptr;
  auto loop = std::make_unique<TCSVLoopClass>(task, task.TaskId(), params.StepNum);
  loop->SetCSVobject(table);
  loop->SetOrFilterMode(params.GetBool(keys::kConditionMode));
  ForEachStoredCondition(params, [&](std::u16string_view line) { loop->AddFilter(line); });
  return SaveCSVLoop(task, params.StepNum, std::move(loop));
}

// A row's cells as UTF-16: a one-byte row is widened once, into `scratch`.
class WideRow {
 public:
  WideRow(const Record& row, std::u16string& scratch) : cells_(row.AllCells()), all_(cells_.All().Wide(scratch)) {}
  size_t Count() const noexcept { return static_cast<size_t>(cells_.Count()); }
  // The characters of all its cells.
  size_t Units() const noexcept { return all_.size(); }
  std::u16string_view operator()(size_t k) const noexcept {
    const uint32_t begin = k == 0 ? 0 : cells_.End(static_cast<int32_t>(k) - 1);
    return all_.substr(begin, cells_.End(static_cast<int32_t>(k)) - begin);
  }

 private:
  Record::Cells cells_;
  std::u16string_view all_;
};

void AppendRowAsJson(const WideRow& row, std::u16string& out) {
  out += u'[';
  for (size_t i = 0; i < row.Count(); ++i) {
    if (i > 0) out += u',';
    AppendJsonString(row(i), out);
  }
  out += u']';
}

}  // namespace

void AppendRowAsJson(const Record& row, std::u16string& out, std::u16string& scratch) {
  AppendRowAsJson(WideRow(row, scratch), out);
}

bool ExecDataLoop(QmTaskBridge& task, TQMPluginParams& params) {
  TCSVLoopClass* loop = FindSavedCSVLoop(task, params.StepNum);
  if (!loop) {
    loop = StartLoop(task, params);
    if (!loop) return false;
  }
  // Read on every pass, so a body step may redirect them.
  // Expanded when they hold a reference, then trimmed; empty: not written.
  // Views of the block unless they hold a reference, so a pass copies nothing.
  std::u16string rowRoom, lineRoom;
  const std::u16string_view rowVar = Trim(ReadExpandedView(params, keys::kRowVarName, rowRoom));
  const std::u16string_view lineVar = Trim(ReadExpandedView(params, keys::kLineVarName, lineRoom));
  const bool json = params.GetBool(keys::kRowFormat);

  if (loop->GetNextItem()) {
    if (!rowVar.empty()) {
      WriteRowNumber(loop->CurrentRowNum(), loop->PassText());
      SetVariableTerminated(rowVar, loop->PassText());
    }
    if (!lineVar.empty()) {
      // Comma text or JSON, whatever the table's own delimiter and quote character.
      const WideRow row(*loop->CurrentRow(), loop->RowUnits());
      std::u16string& content = loop->PassText();
      content.clear();
      // Room for the cells with a quote pair and a separator each, so the
      // text is not moved while it grows.
      content.reserve(2 + row.Units() + 3 * row.Count());
      if (json) {
        AppendRowAsJson(row, content);
      } else {
        JoinDelimited(row.Count(), row, kCommaText, content);
      }
      SetVariableTerminated(lineVar, content);
    }
    return true;
  }
  // The engine has already set the next step past the end-loop step; the
  // variables keep the last row's values.
  loop->StopLoop();
  TakeSavedCSVLoop(task, params.StepNum).reset();
  return true;
}

void StopDataLoop(const QmTaskBridge& task, const TQMPluginParams& params) {
  TakeSavedCSVLoop(task, params.StepNum).reset();
}

}  // namespace qm
