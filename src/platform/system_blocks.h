// The system's side of large blocks: one file per system does the calls.
#pragma once

#include <cstddef>

namespace qm {

// The size the system hands out for a request of `bytes`: the request
// rounded up to the system's granularity for blocks of that size.
size_t SystemBlockSize(size_t bytes) noexcept;
// A block of SystemBlockSize(bytes) bytes from the system, or null.
void* AllocateSystemBlock(size_t bytes) noexcept;
// Returns a block with the size it was allocated with.
void FreeSystemBlock(void* block, size_t bytes) noexcept;

}  // namespace qm
