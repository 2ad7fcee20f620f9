#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

#include "platform/large_blocks.h"
#include "platform/system_blocks.h"

namespace qm {

namespace {
constexpr size_t kHugePage = size_t{2} << 20;
}

size_t SystemBlockSize(size_t bytes) noexcept {
  // Huge pages need their own alignment; the size is rounded to match.
  return bytes < kHugePage ? bytes : (bytes + kHugePage - 1) & ~(kHugePage - 1);
}

void* AllocateSystemBlock(size_t bytes) noexcept {
  if (bytes < kHugePage) return std::malloc(bytes);
  void* block = std::aligned_alloc(kHugePage, bytes);
#ifdef MADV_HUGEPAGE
  if (block) madvise(block, bytes, MADV_HUGEPAGE);  // advice only: ignored where not offered
#endif
  return block;
}

void FreeSystemBlock(void* block, size_t) noexcept { std::free(block); }

void DiscardPages(void* begin, size_t bytes) noexcept {
  const auto page = static_cast<uintptr_t>(sysconf(_SC_PAGESIZE));
  const uintptr_t first = (reinterpret_cast<uintptr_t>(begin) + page - 1) & ~(page - 1);
  const uintptr_t last = (reinterpret_cast<uintptr_t>(begin) + bytes) & ~(page - 1);
  // The pages read as zero afterwards; a failure only keeps the memory.
  if (last > first) madvise(reinterpret_cast<void*>(first), last - first, MADV_DONTNEED);
}

}  // namespace qm
