// Memory for the records a load creates: chunks handed out in order and
// released together, so loading a million records costs a few dozen
// allocations instead of a million, and no per-block overhead. Chunks grow
// from 64 KiB to 4 MiB, so a small table stays small. A reload rewinds the
// arena and fills the same chunks again, then releases what it left unused.
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

  // `bytes` of memory aligned for 32-bit values, valid until Clear() or Rewind().
  void* Allocate(size_t bytes) {
    bytes = (bytes + 3) & ~size_t{3};
    if (static_cast<size_t>(end_ - next_) < bytes) return AllocateAnew(bytes);
    void* block = next_;
    next_ += bytes;
    return block;
  }
  // Releases every chunk; the records that used them must be gone.
  void Clear() noexcept;
  // Forgets every allocation but keeps the chunks for the next ones; the
  // records that used them must be gone.
  void Rewind() noexcept;
  // Releases the chunks that no allocation since the last Rewind() used.
  void ReleaseUnused() noexcept;

  // Where a generation of allocations begins: from here on they come from
  // chunks of their own, so that ReleaseOlder() can give back everything
  // allocated before, once nothing uses it any more. For steps that replace
  // every record: should one fail half way, both generations simply stay.
  struct Generation {
    size_t chunks;
    size_t own;
  };
  Generation StartGeneration() noexcept {
    next_ = end_ = nullptr;
    return {used_, own_.size()};
  }
  void ReleaseOlder(Generation generation) noexcept;

  // Keeps the other arena's memory, released with this arena's from then on
  // (or at its next Rewind()), and leaves the other one empty: for records
  // that move from one table to another. Raises std::bad_alloc, with nothing
  // changed, when its lists cannot grow.
  void TakeOver(RecordArena& other);

 private:
  struct Chunk {
    char* memory;
    size_t bytes;
  };
  static constexpr size_t kFirstChunkBytes = size_t{64} << 10;
  static constexpr size_t kLastChunkBytes = size_t{4} << 20;
  // Allocate() when the current chunk has no room left.
  void* AllocateAnew(size_t bytes);
  static void Free(std::vector<Chunk>& chunks, size_t from) noexcept;

  std::vector<Chunk> chunks_;  // in the order they are filled
  size_t used_ = 0;            // chunks filled (or being filled) since the last rewind
  std::vector<Chunk> own_;     // blocks of single large records
  char* next_ = nullptr;
  char* end_ = nullptr;
};

}  // namespace qm
