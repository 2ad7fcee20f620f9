#include "loop/csv_loop.h"

#include <mutex>
#include <unordered_set>

#include "core/convert.h"
#include "core/errors.h"
#include "table/record.h"
#include "table/simple_csv_object.h"

namespace qm {

namespace {

// Every loop object alive in this process. A slot's number is turned back
// into a pointer only when it names one of them, so a stale or mangled value
// reads as "no loop" instead of leading into freed memory. Loops of different
// tasks come and go on different host threads, hence the lock.
class LiveLoops {
 public:
  void Add(const TCSVLoopClass* loop) {
    std::lock_guard lock(mutex_);
    loops_.insert(reinterpret_cast<uintptr_t>(loop));
  }
  void Remove(const TCSVLoopClass* loop) {
    std::lock_guard lock(mutex_);
    loops_.erase(reinterpret_cast<uintptr_t>(loop));
  }
  TCSVLoopClass* Find(uint64_t identity) {
    std::lock_guard lock(mutex_);
    if (identity > UINTPTR_MAX || !loops_.contains(static_cast<uintptr_t>(identity))) return nullptr;
    return reinterpret_cast<TCSVLoopClass*>(static_cast<uintptr_t>(identity));
  }

 private:
  std::mutex mutex_;
  std::unordered_set<uintptr_t> loops_;
};

LiveLoops& Live() {
  static LiveLoops live;
  return live;
}

}  // namespace

TCSVLoopClass::TCSVLoopClass(const QmTaskBridge& ATaskIntf, int32_t ATaskID, int32_t AStep)
    : TBaseLoop(ATaskIntf, ATaskID, AStep) {
  Live().Add(this);
}

TCSVLoopClass::~TCSVLoopClass() { Live().Remove(this); }

Record* TCSVLoopClass::CurrentRow() const { return FCSVobject ? FCSVobject->GetRow(FCurrentRow) : nullptr; }

void TCSVLoopClass::AddFilter(std::u16string_view ACondParams) { FFilters.AddFilter(ACondParams); }

bool TCSVLoopClass::CheckFilters() {
  if (!FCSVobject) RaiseListIndexError(FCurrentRow);
  return FFilters.CheckFilters(FCSVobject->Storage().GetDataRecord(FCurrentRow));
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

std::u16string CSVLoopVariable(int32_t taskId, int32_t step) {
  std::u16string name = TBaseLoop::GetPrefix(taskId, step);
  name += kCSVLoopSuffix;
  return name;
}

TCSVLoopClass* FindSavedCSVLoop(const QmTaskBridge& task, int32_t step) {
  uint64_t identity = 0;
  if (!TryStrToUInt64(task.GetPrivateVariable(CSVLoopVariable(task.TaskId(), step)), identity) || identity == 0) {
    return nullptr;
  }
  return Live().Find(identity);
}

void SaveCSVLoop(const QmTaskBridge& task, int32_t step, const TCSVLoopClass* loop) {
  task.SetPrivateVariable(CSVLoopVariable(task.TaskId(), step), UIntToStr(reinterpret_cast<uintptr_t>(loop)));
}

}  // namespace qm
