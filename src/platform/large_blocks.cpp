#include "platform/large_blocks.h"

#include <memory>

#include "platform/large_block_cache.h"
#include "platform/system_blocks.h"

namespace qm {

namespace {

// What a process keeps of freed blocks: a table's worth of arena chunks for
// the next load, or the scratch of a whole-table operation for the next one.
constexpr size_t kMaxKeptBytes = size_t{32} << 20;
constexpr size_t kMaxKeptBlocks = 16;

LargeBlockCache& Cache() {
  // Never destroyed, as a block may come back after the library's other
  // objects are gone: the closer below empties it at unload instead. It
  // lives in the library's own storage, so nothing of it is left on the heap.
  alignas(LargeBlockCache) static unsigned char storage[sizeof(LargeBlockCache)];
  static LargeBlockCache* cache =
      std::construct_at(reinterpret_cast<LargeBlockCache*>(storage),
                        LargeBlockCache::System{&AllocateSystemBlock, &FreeSystemBlock}, kMaxKeptBytes, kMaxKeptBlocks);
  return *cache;
}

struct CloseAtUnload {
  ~CloseAtUnload() { Cache().Close(); }
} g_closeAtUnload;

}  // namespace

void* AllocateLargeBlock(size_t bytes) {
  void* block = Cache().Take(SystemBlockSize(bytes));
  if (!block) throw std::bad_alloc();
  return block;
}

void FreeLargeBlock(void* block, size_t bytes) noexcept { Cache().Give(block, SystemBlockSize(bytes)); }

}  // namespace qm
