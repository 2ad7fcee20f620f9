#include "boundary/task_bridge.h"

#include <cstring>

#include "core/errors.h"
#include "core/messages.h"
#include "core/terminated_text.h"
#include "boundary/host_services.h"

namespace qm {

namespace {

void Release(IQmTaskBridge* intf) {
  if (intf) intf->lpVtbl->Release(intf);
}

}  // namespace

QmTaskBridge QmTaskBridge::Cast(void* hostInterface) {
  auto* unknown = static_cast<IQmTaskBridge*>(hostInterface);
  void* bridge = nullptr;
  if (!unknown || unknown->lpVtbl->QueryInterface(unknown, &kQmIidTaskBridge, &bridge) != kQmOk || !bridge) {
    throw QmError(msg::kNoTaskBridge);
  }
  return QmTaskBridge(static_cast<IQmTaskBridge*>(bridge));
}

QmTaskBridge::QmTaskBridge(const QmTaskBridge& other) : intf_(other.intf_) {
  if (intf_) intf_->lpVtbl->AddRef(intf_);
}

QmTaskBridge& QmTaskBridge::operator=(QmTaskBridge other) noexcept {
  std::swap(intf_, other.intf_);
  return *this;
}

QmTaskBridge::~QmTaskBridge() { Release(intf_); }

int32_t QmTaskBridge::TaskId() const { return intf_->lpVtbl->TaskId(intf_); }

int32_t QmTaskBridge::StepCount() const { return intf_->lpVtbl->StepCount(intf_); }

TQMActionPassport QmTaskBridge::StepPassport(int32_t step) const {
  IQmTaskItem* item = nullptr;
  intf_->lpVtbl->GetStep(intf_, &item, step);
  TQMActionPassport passport;
  std::memset(&passport, 0, sizeof passport);
  if (item) {
    item->lpVtbl->Passport(item, &passport);
    item->lpVtbl->Release(item);
  }
  return passport;
}

void QmTaskBridge::SetNextStep(int32_t step) const { intf_->lpVtbl->SetNextStep(intf_, step); }

std::u16string QmTaskBridge::GetPrivateVariable(std::u16string_view name) const {
  return std::u16string(ReadPrivateVariable(name).View());
}

HostBlockText QmTaskBridge::ReadPrivateVariable(std::u16string_view name) const {
  char16_t* block = nullptr;
  const TerminatedText key(name);
  intf_->lpVtbl->GetPrivateVariable(intf_, &block, key.c_str());
  return HostBlockText(block);
}

void QmTaskBridge::SetPrivateVariable(std::u16string_view name, std::u16string_view value) const {
  const TerminatedText key(name);
  const TerminatedText text(value);
  intf_->lpVtbl->SetPrivateVariable(intf_, key.c_str(), text.c_str());
}

void QmTaskBridge::Log(int32_t infoType, std::u16string_view text) const {
  const TerminatedText line(text);
  intf_->lpVtbl->Log(intf_, static_cast<uint8_t>(infoType), line.c_str());
}

}  // namespace qm
