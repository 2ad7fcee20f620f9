#include "table/record_arena.h"

#include <algorithm>

#include "platform/large_blocks.h"

namespace qm {

void* RecordArena::Allocate(size_t bytes) {
  bytes = (bytes + 3) & ~size_t{3};
  if (static_cast<size_t>(end_ - next_) < bytes) {
    chunks_.reserve(chunks_.size() + 1);  // so that recording the chunk cannot fail
    if (bytes > kLastChunkBytes / 4) {
      // A record of its own; the current chunk stays open.
      char* own = static_cast<char*>(AllocateLargeBlock(bytes));
      chunks_.push_back({own, bytes});
      return own;
    }
    char* chunk = static_cast<char*>(AllocateLargeBlock(chunkBytes_));
    chunks_.push_back({chunk, chunkBytes_});
    next_ = chunk;
    end_ = chunk + chunkBytes_;
    chunkBytes_ = std::min(chunkBytes_ * 2, kLastChunkBytes);
  }
  void* block = next_;
  next_ += bytes;
  return block;
}

void RecordArena::Clear() noexcept {
  for (const Chunk& chunk : chunks_) FreeLargeBlock(chunk.memory, chunk.bytes);
  chunks_.clear();
  next_ = end_ = nullptr;
  chunkBytes_ = kFirstChunkBytes;
}

}  // namespace qm
