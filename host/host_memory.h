// The host allocator behind QMGetMemory and QMFreeMemory, with accounting:
// a block freed twice, freed with another size than it was taken with, or
// still held when the plug-in is unloaded is an error.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace qmhost {

class HostMemory {
 public:
  void* Allocate(int32_t size);
  // False (and an error recorded) for an unknown block or a wrong size.
  bool Free(void* block, int32_t size);

  size_t Outstanding() const { return blocks_.size(); }
  // Every accounting error so far, and one line per block still held.
  std::vector<std::string> Problems() const;
  // The accounting errors alone (a test's library keeps its blocks while it runs).
  const std::vector<std::string>& Errors() const { return errors_; }

 private:
  std::map<void*, int32_t> blocks_;
  std::vector<std::string> errors_;
};

HostMemory& Memory();

}  // namespace qmhost
