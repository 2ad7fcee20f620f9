// A growable scratch buffer whose contents need no clearing, for the CSV
// reader's and writer's per-line and per-piece work.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>

namespace qm {

template <typename T>
class RawBuffer {
 public:
  T* Reserve(size_t count) {
    if (count > capacity_) {
      capacity_ = std::max(count, capacity_ + capacity_ / 2);
      data_.reset(new T[capacity_]);
    }
    return data_.get();
  }
  // As Reserve, keeping the first `keep` items.
  T* Grow(size_t count, size_t keep) {
    if (count > capacity_) {
      const size_t capacity = std::max(count, capacity_ + capacity_ / 2);
      std::unique_ptr<T[]> grown(new T[capacity]);
      if (keep) std::memcpy(grown.get(), data_.get(), keep * sizeof(T));
      data_ = std::move(grown);
      capacity_ = capacity;
    }
    return data_.get();
  }
  // Gives the memory back.
  void Release() noexcept {
    data_.reset();
    capacity_ = 0;
  }
  T* data() const noexcept { return data_.get(); }

 private:
  std::unique_ptr<T[]> data_;
  size_t capacity_ = 0;
};

}  // namespace qm
