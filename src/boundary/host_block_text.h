// A zero-terminated text the host allocated for the plug-in (a task-private
// variable's value): read in place, and given back to the host's allocator,
// with its exact size, when this goes.
#pragma once

#include <string_view>

namespace qm {

class HostBlockText {
 public:
  HostBlockText() = default;
  // Takes over a block from QMGetMemory holding a zero-terminated text; null is the empty text.
  explicit HostBlockText(char16_t* block) noexcept;
  HostBlockText(HostBlockText&& other) noexcept : block_(other.block_), size_(other.size_) { other.block_ = nullptr; }
  HostBlockText(const HostBlockText&) = delete;
  HostBlockText& operator=(const HostBlockText&) = delete;
  HostBlockText& operator=(HostBlockText&&) = delete;
  ~HostBlockText();

  std::u16string_view View() const noexcept { return {block_ ? block_ : u"", size_}; }

 private:
  char16_t* block_ = nullptr;
  size_t size_ = 0;
};

}  // namespace qm
