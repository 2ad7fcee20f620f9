#include "display_width.h"

#include <algorithm>

namespace qmhost {

namespace {

#include "display_width_table.inc"

size_t CodePointWidth(char32_t cp) {
  const auto* end = kWidthRanges + std::size(kWidthRanges);
  const auto* range =
      std::upper_bound(kWidthRanges, end, cp, [](char32_t c, const WidthRange& r) { return c < r.first; });
  if (range == kWidthRanges || cp > (range - 1)->last) return 1;
  return (range - 1)->width;
}

}  // namespace

size_t DisplayWidth(std::string_view utf8) {
  size_t width = 0;
  for (size_t i = 0; i < utf8.size();) {
    const auto c = static_cast<unsigned char>(utf8[i]);
    const size_t length = c < 0xC0 ? 1 : c < 0xE0 ? 2 : c < 0xF0 ? 3 : 4;
    if (length == 1 || i + length > utf8.size()) {
      ++width;
      ++i;
      continue;
    }
    char32_t cp = c & (0x7F >> length);
    for (size_t k = 1; k < length; ++k) cp = (cp << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
    width += CodePointWidth(cp);
    i += length;
  }
  return width;
}

}  // namespace qmhost
