#include "boundary/host_block_text.h"

#include <string>

#include "boundary/host_services.h"

namespace qm {

HostBlockText::HostBlockText(char16_t* block) noexcept
    : block_(block), size_(block ? std::char_traits<char16_t>::length(block) : 0) {}

HostBlockText::~HostBlockText() {
  if (!block_) return;
  void* p = block_;
  HostApp().QMFreeMemory(&p, static_cast<int32_t>((size_ + 1) * sizeof(char16_t)));
}

}  // namespace qm
