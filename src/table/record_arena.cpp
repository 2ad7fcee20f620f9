#include "table/record_arena.h"

#include <cstdlib>
#include <new>

namespace qm {

void* RecordArena::Allocate(size_t bytes) {
  bytes = (bytes + 3) & ~size_t{3};
  if (static_cast<size_t>(end_ - next_) < bytes) {
    const size_t size = bytes > kChunkBytes / 4 ? bytes : kChunkBytes;
    char* chunk = static_cast<char*>(std::malloc(size));
    if (!chunk) throw std::bad_alloc();
    chunks_.push_back(chunk);
    if (size != kChunkBytes) return chunk;  // a record of its own; the current chunk stays open
    next_ = chunk;
    end_ = chunk + size;
  }
  void* block = next_;
  next_ += bytes;
  return block;
}

void RecordArena::Clear() noexcept {
  for (char* chunk : chunks_) std::free(chunk);
  chunks_.clear();
  next_ = end_ = nullptr;
}

}  // namespace qm
