// Native build: Windows-1252. Bytes 0x80 to 0x9F carry the typographic
// characters; the five bytes the code page leaves undefined (0x81, 0x8D,
// 0x8F, 0x90, 0x9D) map to the control characters of the same value, as
// Windows maps them, so every byte survives a round trip.
#include "platform/ansi_codepage.h"

#include <cstdint>

namespace qm {

namespace {

constexpr char16_t kHighControls[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char EncodeUnit(char16_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
  for (int k = 0; k < 32; ++k) {
    if (kHighControls[k] == c) return static_cast<char>(0x80 + k);
  }
  return '?';
}

}  // namespace

size_t AnsiMaxUnits(size_t byteCount) { return byteCount; }
size_t AnsiMaxBytes(size_t unitCount) { return unitCount; }

size_t AnsiDecode(const char* bytes, size_t count, char16_t* out) {
  for (size_t i = 0; i < count; ++i) {
    const auto b = static_cast<uint8_t>(bytes[i]);
    out[i] = (b >= 0x80 && b < 0xA0) ? kHighControls[b - 0x80] : static_cast<char16_t>(b);
  }
  return count;
}

size_t AnsiEncode(const char16_t* text, size_t count, char* out) {
  for (size_t i = 0; i < count; ++i) {
    const char16_t c = text[i];
    out[i] = c < 0x80 ? static_cast<char>(c) : EncodeUnit(c);
  }
  return count;
}

}  // namespace qm
