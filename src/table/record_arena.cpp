#include "table/record_arena.h"

#include <algorithm>

#include "platform/large_blocks.h"

namespace qm {

void* RecordArena::AllocateAnew(size_t bytes) {
  if (bytes > kLastChunkBytes / 4) {
    // A record of its own; the current chunk stays open.
    own_.reserve(own_.size() + 1);  // so that recording the block cannot fail
    char* block = static_cast<char*>(AllocateLargeBlock(bytes));
    own_.push_back({block, bytes});
    return block;
  }
  // The next chunk, new or kept from an earlier load, holds at least the request.
  if (used_ == chunks_.size()) {
    const size_t grown = chunks_.empty() ? kFirstChunkBytes : std::min(chunks_.back().bytes * 2, kLastChunkBytes);
    const size_t size = std::max(grown, bytes);
    chunks_.reserve(chunks_.size() + 1);
    chunks_.push_back({static_cast<char*>(AllocateLargeBlock(size)), size});
  } else if (chunks_[used_].bytes < bytes) {
    Chunk& chunk = chunks_[used_];
    const size_t size = std::max(chunk.bytes * 2, bytes);
    char* memory = static_cast<char*>(AllocateLargeBlock(size));
    FreeLargeBlock(chunk.memory, chunk.bytes);
    chunk = {memory, size};
  }
  const Chunk& chunk = chunks_[used_++];
  next_ = chunk.memory + bytes;
  end_ = chunk.memory + chunk.bytes;
  return chunk.memory;
}

void RecordArena::Free(std::vector<Chunk>& chunks, size_t from) noexcept {
  for (size_t k = from; k < chunks.size(); ++k) FreeLargeBlock(chunks[k].memory, chunks[k].bytes);
  chunks.resize(from);
}

void RecordArena::Clear() noexcept {
  Free(chunks_, 0);
  Free(own_, 0);
  used_ = 0;
  next_ = end_ = nullptr;
}

void RecordArena::Rewind() noexcept {
  Free(own_, 0);
  used_ = 0;
  next_ = end_ = nullptr;
}

void RecordArena::ReleaseUnused() noexcept { Free(chunks_, used_); }

void RecordArena::TakeOver(RecordArena& other) {
  own_.reserve(own_.size() + other.chunks_.size() + other.own_.size());
  own_.insert(own_.end(), other.chunks_.begin(), other.chunks_.end());
  own_.insert(own_.end(), other.own_.begin(), other.own_.end());
  other.chunks_.clear();
  other.own_.clear();
  other.used_ = 0;
  other.next_ = other.end_ = nullptr;
}

void RecordArena::ReleaseOlder(Generation generation) noexcept {
  for (size_t k = 0; k < generation.chunks; ++k) FreeLargeBlock(chunks_[k].memory, chunks_[k].bytes);
  for (size_t k = 0; k < generation.own; ++k) FreeLargeBlock(own_[k].memory, own_[k].bytes);
  chunks_.erase(chunks_.begin(), chunks_.begin() + static_cast<ptrdiff_t>(generation.chunks));
  own_.erase(own_.begin(), own_.begin() + static_cast<ptrdiff_t>(generation.own));
  used_ -= generation.chunks;
}

}  // namespace qm
