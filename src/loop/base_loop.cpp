#include "loop/base_loop.h"

#include "abi/host_abi.h"

namespace qm {

namespace {

// Upper-case hexadecimal digits of a value, at least `digits` of them.
void AppendHex(std::u16string& out, uint32_t value, int digits) {
  int count = 1;
  while (count < 8 && (value >> (4 * count)) != 0) ++count;
  if (count < digits) count = digits;
  for (int shift = 4 * (count - 1); shift >= 0; shift -= 4) out += u"0123456789ABCDEF"[(value >> shift) & 0xF];
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
  } else if (FTaskIntf.GetPrivateVariable(kBreakVariable) == kBreakRequest) {
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
  // Both as the 32-bit values they are: a negative number shows all its digits.
  // Built in place: the Data Loop asks for it on every pass.
  std::u16string prefix;
  prefix.reserve(32);
  AppendHex(prefix, static_cast<uint32_t>(ATaskID), 8);
  prefix += u'_';
  AppendHex(prefix, static_cast<uint32_t>(AStepNum), 4);
  prefix += u'_';
  return prefix;
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
