#include "boundary/task_bridge.h"

#include <cstring>

#include "core/errors.h"
#include "core/messages.h"
#include "boundary/host_services.h"

namespace qm {

const QmGuid kIQmTaskBridgeGuid = {0x5C1D7A20, 0x3E84, 0x4B9F, {0xA6, 0xD2, 0x71, 0xF0, 0xC8, 0xE3, 0xB9, 0x45}};

namespace {

// Method positions in the task interface's table.
enum : int {
  kQueryInterface = 0,
  kAddRef = 1,
  kRelease = 2,
  kGetTaskId = 7,
  kGetStepCount = 14,
  kGetStep = 15,
  kSetNextStep = 19,
  kGetPrivateVariable = 20,
  kSetPrivateVariable = 21,
  kLog = 23,
};
// Method positions in a step item's table.
enum : int { kItemParams = 3, kItemPassport = 10 };

template <typename Fn>
Fn Method(void* intf, int position) {
  void* const* table = *static_cast<void* const* const*>(intf);
  return reinterpret_cast<Fn>(table[position]);
}

void Release(void* intf) {
  if (intf) Method<uint32_t (*)(void*)>(intf, kRelease)(intf);
}

// Zero-terminated copy for the host.
std::u16string Z(std::u16string_view text) { return std::u16string(text); }

}  // namespace

QmTaskBridge QmTaskBridge::Cast(void* hostInterface) {
  void* bridge = nullptr;
  if (!hostInterface ||
      Method<int32_t (*)(void*, const QmGuid*, void**)>(hostInterface, kQueryInterface)(
          hostInterface, &kIQmTaskBridgeGuid, &bridge) != 0 ||
      !bridge) {
    throw QmError(msg::kNoTaskBridge);
  }
  return QmTaskBridge(bridge);
}

QmTaskBridge::QmTaskBridge(const QmTaskBridge& other) : intf_(other.intf_) {
  if (intf_) Method<uint32_t (*)(void*)>(intf_, kAddRef)(intf_);
}

QmTaskBridge& QmTaskBridge::operator=(QmTaskBridge other) noexcept {
  std::swap(intf_, other.intf_);
  return *this;
}

QmTaskBridge::~QmTaskBridge() { Release(intf_); }

int32_t QmTaskBridge::TaskId() const { return Method<int32_t (*)(void*)>(intf_, kGetTaskId)(intf_); }

int32_t QmTaskBridge::StepCount() const { return Method<int32_t (*)(void*)>(intf_, kGetStepCount)(intf_); }

TQMActionPassport QmTaskBridge::StepPassport(int32_t step) const {
  void* item = nullptr;
  Method<void (*)(void*, void**, int32_t)>(intf_, kGetStep)(intf_, &item, step);
  TQMActionPassport passport;
  std::memset(&passport, 0, sizeof passport);
  if (item) {
    Method<void (*)(void*, TQMActionPassport*)>(item, kItemPassport)(item, &passport);
    Release(item);
  }
  return passport;
}

void QmTaskBridge::SetNextStep(int32_t step) const { Method<void (*)(void*, int32_t)>(intf_, kSetNextStep)(intf_, step); }

std::u16string QmTaskBridge::GetPrivateVariable(std::u16string_view name) const {
  char16_t* block = nullptr;
  const std::u16string key = Z(name);
  Method<void (*)(void*, char16_t**, const char16_t*)>(intf_, kGetPrivateVariable)(intf_, &block, key.c_str());
  if (!block) return {};
  std::u16string value(block);
  // The host allocated the block for us; it goes back with its exact size.
  void* p = block;
  HostApp().QMFreeMemory(&p, static_cast<int32_t>((value.size() + 1) * sizeof(char16_t)));
  return value;
}

void QmTaskBridge::SetPrivateVariable(std::u16string_view name, std::u16string_view value) const {
  const std::u16string key = Z(name);
  const std::u16string text = Z(value);
  Method<void (*)(void*, const char16_t*, const char16_t*)>(intf_, kSetPrivateVariable)(intf_, key.c_str(),
                                                                                         text.c_str());
}

void QmTaskBridge::Log(int32_t infoType, std::u16string_view text) const {
  const std::u16string line = Z(text);
  Method<void (*)(void*, uint8_t, const char16_t*)>(intf_, kLog)(intf_, static_cast<uint8_t>(infoType), line.c_str());
}

}  // namespace qm
