#include "loop/base_loop.h"

#include "abi/host_abi.h"

namespace qm {

namespace {

// Upper-case hexadecimal digits of a value, at least `digits` of them;
// returns the position after them.
char16_t* WriteHex(char16_t* out, uint32_t value, int digits) {
  int count = 1;
  while (count < 8 && (value >> (4 * count)) != 0) ++count;
  if (count < digits) count = digits;
  for (int shift = 4 * (count - 1); shift >= 0; shift -= 4) *out++ = u"0123456789ABCDEF"[(value >> shift) & 0xF];
  return out;
}

}  // namespace

TBaseLoop::TBaseLoop(const QmTaskBridge& ATaskIntf, int32_t ATaskID, int32_t AStep)
    : FJobID(ATaskID), FStepNum(AStep), FTaskIntf(ATaskIntf) {}

TBaseLoop::~TBaseLoop() = default;

bool TBaseLoop::GetNextItem() {
  bool result;
  if (!IsInited()) {
    // First pass: a break request left over from elsewhere is neither read
    // nor cleared here.
    if (InitLoop()) {
      result = FirstItem();
    } else {
      FInitError = true;
      result = false;
    }
  } else if (FTaskIntf.ReadPrivateVariable(kBreakVariable).View() == kBreakRequest) {
    FTaskIntf.SetPrivateVariable(kBreakVariable, u"");
    result = false;
  } else {
    result = NextItem();
  }
  if (result) return true;
  FTaskIntf.SetNextStep(StepAfterLoop(FTaskIntf, FStepNum));
  DoneLoop();
  return false;
}

void TBaseLoop::StopLoop() {
  if (IsInited()) DoneLoop();
}

std::u16string TBaseLoop::GetPrefix(int32_t ATaskID, int32_t AStepNum) {
  char16_t prefix[kMaxPrefixUnits];
  return std::u16string(prefix, WritePrefix(ATaskID, AStepNum, prefix));
}

size_t TBaseLoop::WritePrefix(int32_t ATaskID, int32_t AStepNum, char16_t* out) noexcept {
  // Both as the 32-bit values they are: a negative number shows all its digits.
  char16_t* end = WriteHex(out, static_cast<uint32_t>(ATaskID), 8);
  *end++ = u'_';
  end = WriteHex(end, static_cast<uint32_t>(AStepNum), 4);
  *end++ = u'_';
  return static_cast<size_t>(end - out);
}

int32_t TBaseLoop::StepAfterLoop(const QmTaskBridge& task, int32_t loopStep) {
  const int32_t count = task.StepCount();
  bool started = false;
  bool found = false;
  int32_t depth = 0;
  int32_t end = 0;
  int32_t last = 0;
  for (int32_t i = 0; i < count; ++i) {
    last = i;
    if (found) continue;
    if (!started && i == loopStep) started = true;
    if (!started) continue;
    // Only the low byte of the type says begin or end of a loop.
    const int32_t type = task.StepPassport(i).info.ActionType & 0xFF;
    if (type == atBeginLoop) {
      ++depth;
    } else if (type == atEndLoop) {
      --depth;
    }
    if (depth < 1) {
      found = true;
      end = i;
    }
  }
  return found ? end + 1 : last + 1;
}

}  // namespace qm
