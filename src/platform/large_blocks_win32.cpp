#include <windows.h>

#include <cstdint>
#include <new>

#include "platform/large_blocks.h"

namespace qm {

// Huge pages on Windows need a privilege users rarely hold; committed
// virtual memory is the next best thing for blocks this large.
void* AllocateLargeBlock(size_t bytes) {
  void* block = VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
  if (!block) throw std::bad_alloc();
  return block;
}

void FreeLargeBlock(void* block, size_t) noexcept { VirtualFree(block, 0, MEM_RELEASE); }

void DiscardPages(void* begin, size_t bytes) noexcept {
  SYSTEM_INFO info;
  GetSystemInfo(&info);
  const uintptr_t page = info.dwPageSize;
  const uintptr_t first = (reinterpret_cast<uintptr_t>(begin) + page - 1) & ~(page - 1);
  const uintptr_t last = (reinterpret_cast<uintptr_t>(begin) + bytes) & ~(page - 1);
  if (last <= first) return;
  // The pages' contents need not be kept; unlocking pages that are not
  // locked takes them out of the working set. Both are advice: a failure
  // only keeps the memory.
  void* pages = reinterpret_cast<void*>(first);
  if (VirtualAlloc(pages, last - first, MEM_RESET, PAGE_READWRITE)) VirtualUnlock(pages, last - first);
}

}  // namespace qm
