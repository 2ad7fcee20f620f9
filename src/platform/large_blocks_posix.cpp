#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <new>

#include "platform/large_blocks.h"

namespace qm {

namespace {
constexpr size_t kHugePage = size_t{2} << 20;
}

void* AllocateLargeBlock(size_t bytes) {
  if (bytes < kHugePage) {
    void* small = std::malloc(bytes);
    if (!small) throw std::bad_alloc();
    return small;
  }
  // Huge pages need their own alignment; the size is rounded to match.
  const size_t rounded = (bytes + kHugePage - 1) & ~(kHugePage - 1);
  void* block = std::aligned_alloc(kHugePage, rounded);
  if (!block) throw std::bad_alloc();
#ifdef MADV_HUGEPAGE
  madvise(block, rounded, MADV_HUGEPAGE);  // advice only: ignored where not offered
#endif
  return block;
}

void FreeLargeBlock(void* block, size_t) noexcept { std::free(block); }

void DiscardPages(void* begin, size_t bytes) noexcept {
  const auto page = static_cast<uintptr_t>(sysconf(_SC_PAGESIZE));
  const uintptr_t first = (reinterpret_cast<uintptr_t>(begin) + page - 1) & ~(page - 1);
  const uintptr_t last = (reinterpret_cast<uintptr_t>(begin) + bytes) & ~(page - 1);
  // The pages read as zero afterwards; a failure only keeps the memory.
  if (last > first) madvise(reinterpret_cast<void*>(first), last - first, MADV_DONTNEED);
}

}  // namespace qm
