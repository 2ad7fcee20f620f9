// Memory for the records a load creates: chunks handed out in order and
// released together, so loading a million records costs a few dozen
// allocations instead of a million, and no per-block overhead. Chunks grow
// from 64 KiB to 4 MiB, so a small table stays small.
#pragma once

#include <cstddef>
#include <vector>

namespace qm {

class RecordArena {
 public:
  RecordArena() = default;
  RecordArena(const RecordArena&) = delete;
  RecordArena& operator=(const RecordArena&) = delete;
  ~RecordArena() { Clear(); }

  // `bytes` of memory aligned for 32-bit values, valid until Clear().
  void* Allocate(size_t bytes);
  // Releases every chunk; the records that used them must be gone.
  void Clear() noexcept;

 private:
  static constexpr size_t kFirstChunkBytes = size_t{64} << 10;
  static constexpr size_t kLastChunkBytes = size_t{4} << 20;
  size_t chunkBytes_ = kFirstChunkBytes;
  struct Chunk {
    char* memory;
    size_t bytes;
  };
  std::vector<Chunk> chunks_;
  char* next_ = nullptr;
  char* end_ = nullptr;
};

}  // namespace qm
