#include "host_memory.h"

#include <cstdlib>
#include <cstring>

namespace qmhost {

void* HostMemory::Allocate(int32_t size) {
  if (size < 0) {
    errors_.push_back("QMGetMemory asked for " + std::to_string(size) + " bytes");
    return nullptr;
  }
  void* block = std::malloc(size > 0 ? static_cast<size_t>(size) : 1);
  std::memset(block, 0xCD, size > 0 ? static_cast<size_t>(size) : 1);  // no help from zeroed memory
  blocks_[block] = size;
  return block;
}

bool HostMemory::Free(void* block, int32_t size) {
  const auto it = blocks_.find(block);
  if (it == blocks_.end()) {
    errors_.push_back(block ? "QMFreeMemory of a block that is not held (freed twice?)" : "QMFreeMemory of null");
    return false;
  }
  if (it->second != size) {
    errors_.push_back("QMFreeMemory with size " + std::to_string(size) + " for a block of " +
                      std::to_string(it->second) + " bytes");
    blocks_.erase(it);
    std::free(block);
    return false;
  }
  blocks_.erase(it);
  std::free(block);
  return true;
}

std::vector<std::string> HostMemory::Problems() const {
  std::vector<std::string> problems = errors_;
  for (const auto& [block, size] : blocks_) {
    (void)block;
    problems.push_back("block of " + std::to_string(size) + " bytes never freed");
  }
  return problems;
}

HostMemory& Memory() {
  static HostMemory memory;
  return memory;
}

}  // namespace qmhost
