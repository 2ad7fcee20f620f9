// The loop over the rows of the task's table that pass a filter list, and the
// task-private slot in which a begin-loop step keeps it between passes.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "loop/base_loop.h"
#include "loop/record_filter.h"

namespace qm {

class Record;
class TSimpleCSVDataClass;

class TCSVLoopClass : public TBaseLoop {
 public:
  TCSVLoopClass(const QmTaskBridge& ATaskIntf, int32_t ATaskID, int32_t AStep);
  ~TCSVLoopClass() override;

  // The task's table; not owned. Until it is set the loop sees no rows.
  void SetCSVobject(TSimpleCSVDataClass* table) noexcept { FCSVobject = table; }
  int32_t CurrentRowNum() const noexcept { return FCurrentRow; }
  // The table's row at the current position; null without a table or when
  // the position is past the last row.
  Record* CurrentRow() const;
  bool OrFilterMode() const noexcept { return FFilters.OrFilterMode(); }
  void SetOrFilterMode(bool value) noexcept { FFilters.SetOrFilterMode(value); }

  // Adds one stored condition line; a column that is not an integer raises
  // the conversion error and adds nothing.
  void AddFilter(std::u16string_view ACondParams);
  // Whether the current row passes the conditions; the row must exist.
  bool CheckFilters();

  // Room for the row's text that a pass hands to the host, kept from pass to
  // pass so that it is allocated once, not on every pass.
  std::u16string& PassText() noexcept { return FPassText; }
  // Room for a one-byte row widened to UTF-16, kept the same way.
  std::u16string& RowUnits() noexcept { return FRowUnits; }

  bool IsInited() const override { return FInited; }
  bool InitLoop() override;
  void DoneLoop() override { FInited = false; }
  bool FirstItem() override;
  bool NextItem() override;

 private:
  // Moves on from the current position to the first row that passes. The row
  // count is asked for at every test, so rows deleted or appended by the
  // loop's body steps count at once.
  bool ScanRows();
  int32_t RowCount() const noexcept;

  TRecordFilterList FFilters;
  TSimpleCSVDataClass* FCSVobject = nullptr;
  int32_t FCurrentRow = 0;
  bool FInited = false;
  std::u16string FPassText;
  std::u16string FRowUnits;
};

// The task-private variable that holds the loop of a step is named
// GetPrefix(task, step) + "$CSVLOOP$".
inline constexpr std::u16string_view kCSVLoopSuffix = u"$CSVLOOP$";

// The loop saved for a step of the task, or null. The slot holds the loop's
// identity in decimal; "0", an empty or absent slot, text that is not an
// unsigned decimal number and a number that is no live loop all mean none.
TCSVLoopClass* FindSavedCSVLoop(const QmTaskBridge& task, int32_t step);
// Saves a new loop in the step's slot and returns it. LiveObjects keeps it
// until TakeSavedCSVLoop(), or the library's unload.
TCSVLoopClass* SaveCSVLoop(const QmTaskBridge& task, int32_t step, std::unique_ptr<TCSVLoopClass> loop);
// Clears the step's slot to "0" and hands its loop, if any, to the caller.
std::unique_ptr<TCSVLoopClass> TakeSavedCSVLoop(const QmTaskBridge& task, int32_t step);

}  // namespace qm
