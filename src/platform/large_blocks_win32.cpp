#include <windows.h>

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

}  // namespace qm
