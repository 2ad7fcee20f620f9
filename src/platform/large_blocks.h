// Large blocks of memory for table storage. Where the system can back blocks
// of a huge page or more with huge pages it is asked to, which saves most of
// the page faults (and TLB misses) of filling a table of hundreds of megabytes.
// Freed blocks are kept, within a bound, for the next request that fits
// (large_block_cache.h) and go back to the system at the library's unload.
#pragma once

#include <cstddef>

namespace qm {

// `bytes` of memory aligned for any value; raises std::bad_alloc on failure.
void* AllocateLargeBlock(size_t bytes);
// Returns a block with the size it was allocated with.
void FreeLargeBlock(void* block, size_t bytes) noexcept;
// Gives the system back the memory of the whole pages within [begin, begin +
// bytes) of any block, which stays usable: those pages' contents become
// undefined. For scratch memory that is already used up.
void DiscardPages(void* begin, size_t bytes) noexcept;

}  // namespace qm
