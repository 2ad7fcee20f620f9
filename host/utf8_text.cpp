#include "utf8_text.h"

#include <cstdio>

namespace qmhost {

size_t FirstInvalidUtf8(std::string_view text, bool cutAtEnd) {
  size_t i = 0;
  while (i < text.size()) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (c < 0x80) {
      ++i;
      continue;
    }
    size_t length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (c >= 0xC2 && c <= 0xDF) {
      length = 2;
    } else if (c >= 0xE0 && c <= 0xEF) {
      length = 3;
      if (c == 0xE0) low = 0xA0;
      if (c == 0xED) high = 0x9F;  // no surrogates
    } else if (c >= 0xF0 && c <= 0xF4) {
      length = 4;
      if (c == 0xF0) low = 0x90;
      if (c == 0xF4) high = 0x8F;
    } else {
      return i;
    }
    for (size_t k = 1; k < length; ++k) {
      if (i + k >= text.size()) return cutAtEnd ? std::string_view::npos : i;
      const auto next = static_cast<unsigned char>(text[i + k]);
      if (next < (k == 1 ? low : 0x80) || next > (k == 1 ? high : 0xBF)) return i;
    }
    i += length;
  }
  return std::string_view::npos;
}

std::string HexByte(unsigned char c) {
  char text[8];
  std::snprintf(text, sizeof text, "0x%02X", c);
  return text;
}

}  // namespace qmhost
