// The running task as the host offers it: the COM-style IQmTaskBridge of
// abi/host_abi.h, behind a counted C++ reference.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "abi/host_abi.h"
#include "boundary/host_block_text.h"

namespace qm {

// A counted reference to the host's task interface (IQmTaskBridge).
class QmTaskBridge {
 public:
  // Casts a host interface to IQmTaskBridge; raises when it refuses.
  static QmTaskBridge Cast(void* hostInterface);

  QmTaskBridge() = default;
  QmTaskBridge(const QmTaskBridge& other);
  QmTaskBridge(QmTaskBridge&& other) noexcept : intf_(other.intf_) { other.intf_ = nullptr; }
  QmTaskBridge& operator=(QmTaskBridge other) noexcept;
  ~QmTaskBridge();

  explicit operator bool() const { return intf_ != nullptr; }

  int32_t TaskId() const;
  int32_t StepCount() const;
  TQMActionPassport StepPassport(int32_t step) const;
  void SetNextStep(int32_t step) const;
  // An absent variable reads as the empty text.
  std::u16string GetPrivateVariable(std::u16string_view name) const;
  // The same read in the host's own block, without a copy.
  HostBlockText ReadPrivateVariable(std::u16string_view name) const;
  void SetPrivateVariable(std::u16string_view name, std::u16string_view value) const;
  void Log(int32_t infoType, std::u16string_view text) const;

 private:
  explicit QmTaskBridge(IQmTaskBridge* intf) : intf_(intf) {}
  IQmTaskBridge* intf_ = nullptr;
};

}  // namespace qm
