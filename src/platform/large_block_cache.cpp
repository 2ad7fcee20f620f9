#include "platform/large_block_cache.h"

#include <algorithm>

#if defined(__SANITIZE_ADDRESS__)
#define QMCSV_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QMCSV_ADDRESS_SANITIZER 1
#endif
#endif
#if defined(QMCSV_ADDRESS_SANITIZER)
#include <sanitizer/asan_interface.h>
#endif

namespace qm {

namespace {

// Under AddressSanitizer a kept block may not be touched until it is lent
// again, so that a use of memory the program gave back is caught as it would
// be after free().
void CloseKept([[maybe_unused]] void* block, [[maybe_unused]] size_t bytes) noexcept {
#if defined(QMCSV_ADDRESS_SANITIZER)
  __asan_poison_memory_region(block, bytes);
#endif
}

void OpenKept([[maybe_unused]] void* block, [[maybe_unused]] size_t bytes) noexcept {
#if defined(QMCSV_ADDRESS_SANITIZER)
  __asan_unpoison_memory_region(block, bytes);
#endif
}

}  // namespace

void* LargeBlockCache::Take(size_t bytes) {
  {
    std::lock_guard lock(mutex_);
    const size_t most = bytes + bytes / 4;
    auto best = kept_.end();
    for (auto it = kept_.begin(); it != kept_.end(); ++it) {
      if (it->bytes >= bytes && it->bytes <= most && (best == kept_.end() || it->bytes < best->bytes)) best = it;
    }
    if (best != kept_.end()) {
      const Block block = *best;
      if (block.bytes != bytes) lent_.push_back(block);  // may raise: nothing is changed yet
      kept_.erase(best);
      keptBytes_ -= block.bytes;
      OpenKept(block.memory, block.bytes);
      return block.memory;
    }
  }
  return system_.allocate(bytes);
}

void LargeBlockCache::Give(void* block, size_t bytes) noexcept {
  if (!block) return;
  std::unique_lock lock(mutex_);
  const auto lent = std::find_if(lent_.begin(), lent_.end(), [block](const Block& b) { return b.memory == block; });
  if (lent != lent_.end()) {
    bytes = lent->bytes;
    lent_.erase(lent);
  }
  if (closed_ || bytes > maxKeptBytes_ || maxKeptBlocks_ == 0) {
    lock.unlock();
    system_.release(block, bytes);
    return;
  }
  while (keptBytes_ + bytes > maxKeptBytes_ || kept_.size() >= maxKeptBlocks_) ReleaseOldest();
  try {
    kept_.push_back({block, bytes});
  } catch (...) {
    lock.unlock();
    system_.release(block, bytes);
    return;
  }
  keptBytes_ += bytes;
  CloseKept(block, bytes);
}

void LargeBlockCache::ReleaseOldest() noexcept {
  const Block oldest = kept_.front();
  kept_.erase(kept_.begin());
  keptBytes_ -= oldest.bytes;
  OpenKept(oldest.memory, oldest.bytes);
  system_.release(oldest.memory, oldest.bytes);
}

void LargeBlockCache::Close() noexcept {
  std::lock_guard lock(mutex_);
  closed_ = true;
  while (!kept_.empty()) ReleaseOldest();
  // The lists' own memory goes too: the cache itself is never destroyed.
  std::vector<Block>().swap(kept_);
  if (lent_.empty()) std::vector<Block>().swap(lent_);
}

size_t LargeBlockCache::KeptBytes() const {
  std::lock_guard lock(mutex_);
  return keptBytes_;
}

size_t LargeBlockCache::KeptBlocks() const {
  std::lock_guard lock(mutex_);
  return kept_.size();
}

}  // namespace qm
