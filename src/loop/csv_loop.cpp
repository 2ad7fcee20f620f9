#include "loop/csv_loop.h"

#include <utility>

#include "core/convert.h"
#include "core/errors.h"
#include "table/record.h"
#include "table/simple_csv_object.h"
#include "task/live_objects.h"

namespace qm {

TCSVLoopClass::TCSVLoopClass(const QmTaskBridge& ATaskIntf, int32_t ATaskID, int32_t AStep)
    : TBaseLoop(ATaskIntf, ATaskID, AStep) {}

TCSVLoopClass::~TCSVLoopClass() = default;

Record* TCSVLoopClass::CurrentRow() const { return FCSVobject ? FCSVobject->GetRow(FCurrentRow) : nullptr; }

void TCSVLoopClass::AddFilter(std::u16string_view ACondParams) { FFilters.AddFilter(ACondParams); }

bool TCSVLoopClass::CheckFilters() {
  if (!FCSVobject) RaiseListIndexError(FCurrentRow);
  return FFilters.CheckFilters(FCSVobject->Storage().GetDataRecord(FCurrentRow), FCurrentRow);
}

bool TCSVLoopClass::InitLoop() {
  FInited = true;
  FCurrentRow = 0;
  return true;
}

bool TCSVLoopClass::FirstItem() {
  FCurrentRow = 0;
  return ScanRows();
}

bool TCSVLoopClass::NextItem() {
  ++FCurrentRow;
  return ScanRows();
}

int32_t TCSVLoopClass::RowCount() const noexcept { return FCSVobject ? FCSVobject->RecordCount() : 0; }

bool TCSVLoopClass::ScanRows() {
  while (FCurrentRow < RowCount() && !CheckFilters()) ++FCurrentRow;
  return FCurrentRow < RowCount();
}

namespace {

// The slot's name, built on every pass without the heap.
class SlotName {
 public:
  SlotName(int32_t taskId, int32_t step) : size_(TBaseLoop::WritePrefix(taskId, step, text_)) {
    kCSVLoopSuffix.copy(text_ + size_, kCSVLoopSuffix.size());
    size_ += kCSVLoopSuffix.size();
  }
  std::u16string_view View() const noexcept { return {text_, size_}; }

 private:
  char16_t text_[TBaseLoop::kMaxPrefixUnits + kCSVLoopSuffix.size()];
  size_t size_;
};

}  // namespace

TCSVLoopClass* FindSavedCSVLoop(const QmTaskBridge& task, int32_t step) {
  uint64_t number = 0;
  if (!TryStrToUInt64(task.ReadPrivateVariable(SlotName(task.TaskId(), step).View()).View(), number)) return nullptr;
  return LiveObjects::Instance().Find<TCSVLoopClass>(number);
}

TCSVLoopClass* SaveCSVLoop(const QmTaskBridge& task, int32_t step, std::unique_ptr<TCSVLoopClass> loop) {
  // Kept for its whole life: a slot's number is turned back into a loop only
  // while the loop lives, and a loop left saved when its task stops is freed
  // when the library unloads.
  TCSVLoopClass* saved = LiveObjects::Instance().Keep(std::move(loop));
  task.SetPrivateVariable(SlotName(task.TaskId(), step).View(), UIntToStr(LiveObjects::NumberOf(saved)));
  return saved;
}

std::unique_ptr<TCSVLoopClass> TakeSavedCSVLoop(const QmTaskBridge& task, int32_t step) {
  TCSVLoopClass* loop = FindSavedCSVLoop(task, step);
  task.SetPrivateVariable(SlotName(task.TaskId(), step).View(), u"0");
  return LiveObjects::Instance().Take(loop);
}

}  // namespace qm
