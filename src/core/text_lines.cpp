#include "core/text_lines.h"

#include "core/simd_kernels.h"

namespace qm {

bool TextLineCursor::Next(std::u16string_view& line) {
  if (p_ >= end_) return false;
  const char16_t* start = p_;
  const char16_t* q = simd::Active().findAny3Units(start, end_, u'\n', u'\r', 0);
  line = std::u16string_view(start, static_cast<size_t>(q - start));
  if (q == end_) {
    p_ = end_;
    return true;
  }
  if (*q == 0) {
    nul_ = true;
    p_ = end_ = q;
    return q != start;
  }
  p_ = (*q == 13 && q + 1 < end_ && q[1] == 10) ? q + 2 : q + 1;
  return true;
}

std::vector<std::u16string> SplitLines(std::u16string_view text) {
  std::vector<std::u16string> lines;
  TextLineCursor cursor(text);
  for (std::u16string_view line; cursor.Next(line);) lines.emplace_back(line);
  return lines;
}

}  // namespace qm
