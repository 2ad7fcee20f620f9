#include "core/utf.h"

#include <cstdint>
#include <cstring>

#include "core/simd_utf.h"

namespace qm {

namespace {

constexpr char16_t kReplacement = 0xFFFD;

}  // namespace

size_t DecodeUtf8Sequence(const char* bytes, size_t count, char16_t*& out) {
  const auto* s = reinterpret_cast<const uint8_t*>(bytes);
  const uint8_t b0 = s[0];
  if (b0 < 0x80) {
    *out++ = b0;
    return 1;
  }
  int extra;
  uint32_t cp;
  uint8_t lo = 0x80, hi = 0xBF;  // range of the second byte
  if (b0 >= 0xC2 && b0 <= 0xDF) {
    extra = 1, cp = b0 & 0x1Fu;
  } else if (b0 >= 0xE0 && b0 <= 0xEF) {
    extra = 2, cp = b0 & 0x0Fu;
    if (b0 == 0xE0) lo = 0xA0;  // no overlong forms
    if (b0 == 0xED) hi = 0x9F;  // no surrogates
  } else if (b0 >= 0xF0 && b0 <= 0xF4) {
    extra = 3, cp = b0 & 0x07u;
    if (b0 == 0xF0) lo = 0x90;
    if (b0 == 0xF4) hi = 0x8F;  // nothing above U+10FFFF
  } else {
    *out++ = kReplacement;
    return 1;
  }
  size_t j = 1;
  for (int k = 0; k < extra; ++k, ++j) {
    if (j >= count) {
      *out++ = kReplacement;
      return j;
    }
    const uint8_t b = s[j];
    if (b < (k == 0 ? lo : 0x80) || b > (k == 0 ? hi : 0xBF)) {
      *out++ = kReplacement;
      return j;
    }
    cp = (cp << 6) | (b & 0x3Fu);
  }
  if (cp < 0x10000) {
    *out++ = static_cast<char16_t>(cp);
  } else {
    cp -= 0x10000;
    *out++ = static_cast<char16_t>(0xD800 + (cp >> 10));
    *out++ = static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
  }
  return j;
}

namespace {

constexpr uint64_t kHighBits = 0x8080808080808080ull;

inline uint64_t Load8(const char* p) {
  uint64_t v;
  std::memcpy(&v, p, 8);
  return v;
}

}  // namespace

size_t DecodeUtf8(const char* in, size_t n, char16_t* out) {
  const auto* s = reinterpret_cast<const uint8_t*>(in);
  char16_t* o = out;
  size_t i = 0;
  while (i < n) {
    // Plain ASCII sixteen or eight bytes at a time.
#if defined(__SSE2__)
    // The widened block is stored whole; only its ASCII prefix counts. Output
    // never runs ahead of input, so the stores stay within the room.
    while (i + 16 <= n) {
      const size_t ascii = simd::WidenAscii16(in + i, o);
      o += ascii;
      i += ascii;
      if (ascii < 16) break;
    }
#endif
    while (i + 8 <= n && (Load8(in + i) & kHighBits) == 0) {
      for (int k = 0; k < 8; ++k) o[k] = s[i + k];
      o += 8;
      i += 8;
    }
    if (i >= n) break;
    if (s[i] < 0x80) {
      *o++ = s[i++];
      continue;
    }
    i += DecodeUtf8Sequence(in + i, n - i, o);
  }
  return static_cast<size_t>(o - out);
}

std::u16string Utf8ToUtf16(std::string_view in) {
  std::u16string out(in.size(), u'\0');
  out.resize(DecodeUtf8(in.data(), in.size(), out.data()));
  return out;
}

size_t EncodeUtf8(const char16_t* s, size_t n, char* out) {
  auto* o = reinterpret_cast<uint8_t*>(out);
  size_t i = 0;
  while (i < n) {
#if defined(__SSE2__)
    // Sixteen units a look: all ASCII goes out in one store, else the ASCII
    // units before the first other one do. The store may pass what is kept,
    // which stays within the 3 * n bytes of room while sixteen units remain.
    while (n - i >= 16) {
      const size_t ascii = simd::NarrowAscii16(s + i, o);
      o += ascii;
      i += ascii;
      if (ascii < 16) break;
    }
#endif
    if (i >= n) break;
    uint32_t cp = s[i++];
    if (cp < 0x80) {
      *o++ = static_cast<uint8_t>(cp);
      continue;
    }
    if (cp >= 0xD800 && cp <= 0xDFFF) {
      if (cp <= 0xDBFF && i < n && s[i] >= 0xDC00 && s[i] <= 0xDFFF) {
        cp = 0x10000 + ((cp - 0xD800) << 10) + (s[i++] - 0xDC00u);
      } else {
        cp = kReplacement;
      }
    }
    if (cp < 0x800) {
      *o++ = static_cast<uint8_t>(0xC0 | (cp >> 6));
      *o++ = static_cast<uint8_t>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
      *o++ = static_cast<uint8_t>(0xE0 | (cp >> 12));
      *o++ = static_cast<uint8_t>(0x80 | ((cp >> 6) & 0x3F));
      *o++ = static_cast<uint8_t>(0x80 | (cp & 0x3F));
    } else {
      *o++ = static_cast<uint8_t>(0xF0 | (cp >> 18));
      *o++ = static_cast<uint8_t>(0x80 | ((cp >> 12) & 0x3F));
      *o++ = static_cast<uint8_t>(0x80 | ((cp >> 6) & 0x3F));
      *o++ = static_cast<uint8_t>(0x80 | (cp & 0x3F));
    }
  }
  return static_cast<size_t>(o - reinterpret_cast<uint8_t*>(out));
}

std::string Utf16ToUtf8(std::u16string_view in) {
  std::string out(3 * in.size(), '\0');
  out.resize(EncodeUtf8(in.data(), in.size(), out.data()));
  return out;
}

std::u16string Widen(std::string_view ascii) { return std::u16string(ascii.begin(), ascii.end()); }

}  // namespace qm
