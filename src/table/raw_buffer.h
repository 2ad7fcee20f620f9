// A growable scratch buffer whose contents need no clearing, for the CSV
// reader's and writer's per-line and per-piece work.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>

#include "platform/large_blocks.h"

namespace qm {

template <typename T>
class RawBuffer {
 public:
  T* Reserve(size_t count) {
    if (count > capacity_) {
      const size_t capacity = std::max(count, capacity_ + capacity_ / 2);
      std::unique_ptr<T[]> grown(new T[capacity]);
      Drop();
      data_ = std::move(grown);
      capacity_ = capacity;
    }
    return data_.get();
  }
  // As Reserve, keeping the first `keep` items.
  T* Grow(size_t count, size_t keep) {
    if (count > capacity_) {
      const size_t capacity = std::max(count, capacity_ + capacity_ / 2);
      std::unique_ptr<T[]> grown(new T[capacity]);
      if (keep) std::memcpy(grown.get(), data_.get(), keep * sizeof(T));
      Drop();
      data_ = std::move(grown);
      capacity_ = capacity;
    }
    return data_.get();
  }
  // Gives the memory back.
  void Release() noexcept {
    Drop();
    data_.reset();
    capacity_ = 0;
  }
  T* data() const noexcept { return data_.get(); }
  ~RawBuffer() { Drop(); }

 private:
  // The allocator may keep a freed buffer of some megabytes for later
  // (glibc does, once it has seen blocks that large come and go), so a large
  // one's pages go back to the system before it is freed.
  void Drop() noexcept {
    if (capacity_ * sizeof(T) >= kDropAbove) DiscardPages(data_.get(), capacity_ * sizeof(T));
  }
  static constexpr size_t kDropAbove = size_t{4} << 20;

  std::unique_ptr<T[]> data_;
  size_t capacity_ = 0;
};

}  // namespace qm
