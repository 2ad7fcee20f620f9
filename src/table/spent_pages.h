// Giving back, while a long line is split, the pages of its text that the
// split has left behind, so that a line of hundreds of megabytes and its
// cells never sit in memory whole side by side.
#pragma once

#include <cstddef>

#include "platform/large_blocks.h"

namespace qm {

// The pages a megabyte at a time, kept 256 bytes behind the split's
// position: the UTF-8 split looks back up to 63 bytes, never further.
class SpentPages {
 public:
  // `on` false: nothing is given back.
  SpentPages(const void* text, bool on) noexcept : kept_(static_cast<const char*>(text)), on_(on) {}

  // The split has read everything before `position`.
  void Behind(const void* position) noexcept {
    const auto* s = static_cast<const char*>(position);
    if (on_ && s - kept_ >= kStep + kBehind) {
      DiscardPages(const_cast<char*>(kept_), static_cast<size_t>(s - kBehind - kept_));
      kept_ = s - kBehind;
    }
  }

 private:
  static constexpr ptrdiff_t kStep = ptrdiff_t{1} << 20;
  static constexpr ptrdiff_t kBehind = 256;
  const char* kept_;  // nothing before it is read again
  bool on_;
};

}  // namespace qm
