// A growable scratch buffer whose contents need no clearing, for the CSV
// reader's and writer's per-line and per-piece work. Buffers of some size are
// large blocks, so the scratch of one load or save serves the next one.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>

#include "platform/large_blocks.h"

namespace qm {

template <typename T>
class RawBuffer {
  static_assert(std::is_trivial_v<T>, "the buffer's items are never constructed");

 public:
  RawBuffer() = default;
  RawBuffer(const RawBuffer&) = delete;
  RawBuffer& operator=(const RawBuffer&) = delete;
  ~RawBuffer() { Release(); }

  T* Reserve(size_t count) { return Grow(count, 0); }
  // As Reserve, keeping the first `keep` items.
  T* Grow(size_t count, size_t keep) {
    if (count > capacity_) {
      const size_t capacity = std::max(count, capacity_ + capacity_ / 2);
      T* grown = Allocate(capacity);
      if (keep) std::memcpy(grown, data_, keep * sizeof(T));
      Release();
      data_ = grown;
      capacity_ = capacity;
    }
    return data_;
  }
  // Gives the memory back.
  void Release() noexcept {
    if (!data_) return;
    const size_t bytes = capacity_ * sizeof(T);
    // The allocator may keep a freed buffer of some megabytes for later, so a
    // large one's pages go back to the system before it is freed.
    if (bytes >= kDropAbove) DiscardPages(data_, bytes);
    if (bytes >= kLargeAbove) {
      FreeLargeBlock(data_, bytes);
    } else {
      std::allocator<T>().deallocate(data_, capacity_);
    }
    data_ = nullptr;
    capacity_ = 0;
  }
  T* data() const noexcept { return data_; }

 private:
  static T* Allocate(size_t capacity) {
    const size_t bytes = capacity * sizeof(T);
    return bytes >= kLargeAbove ? static_cast<T*>(AllocateLargeBlock(bytes)) : std::allocator<T>().allocate(capacity);
  }
  static constexpr size_t kLargeAbove = size_t{64} << 10;
  static constexpr size_t kDropAbove = size_t{4} << 20;

  T* data_ = nullptr;
  size_t capacity_ = 0;
};

}  // namespace qm
