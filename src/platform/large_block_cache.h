// Freed large blocks kept for the next request that fits: a reload, the next
// Open Data or a whole-table operation's scratch then gets memory whose pages
// the system has already handed out, instead of fresh pages it must find and
// zero one by one. The cache is small and bounded: what does not fit under
// the bound goes back to the system at once, the oldest kept blocks first.
#pragma once

#include <cstddef>
#include <mutex>
#include <vector>

namespace qm {

class LargeBlockCache {
 public:
  // The system's side: `allocate` answers null on failure; `release` gets a
  // block with the size it was allocated with.
  struct System {
    void* (*allocate)(size_t bytes);
    void (*release)(void* block, size_t bytes) noexcept;
  };
  LargeBlockCache(System system, size_t maxKeptBytes, size_t maxKeptBlocks) noexcept
      : system_(system), maxKeptBytes_(maxKeptBytes), maxKeptBlocks_(maxKeptBlocks) {}
  LargeBlockCache(const LargeBlockCache&) = delete;
  LargeBlockCache& operator=(const LargeBlockCache&) = delete;
  ~LargeBlockCache() { Close(); }

  // A block of at least `bytes` (a size the system hands out as it is): the
  // smallest kept one of at most a quarter more, else a new one; null when
  // the system has none.
  void* Take(size_t bytes);
  // Takes back a block with the size it was asked for with.
  void Give(void* block, size_t bytes) noexcept;
  // Gives every kept block back to the system; blocks given back later go
  // straight on to it (the library's unload).
  void Close() noexcept;

  size_t KeptBytes() const;
  size_t KeptBlocks() const;

 private:
  struct Block {
    void* memory;
    size_t bytes;
  };
  void ReleaseOldest() noexcept;

  System system_;
  size_t maxKeptBytes_;
  size_t maxKeptBlocks_;
  mutable std::mutex mutex_;  // tasks run on host threads of their own
  std::vector<Block> kept_;   // oldest first
  size_t keptBytes_ = 0;
  // Blocks handed out for a smaller request than their size, with their size.
  std::vector<Block> lent_;
  bool closed_ = false;
};

}  // namespace qm
