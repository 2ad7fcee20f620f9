#include "core/utf.h"

#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace qm {

namespace {

constexpr char16_t kReplacement = 0xFFFD;

void AppendCodePoint(std::u16string& out, uint32_t cp) {
  if (cp < 0x10000) {
    out.push_back(static_cast<char16_t>(cp));
  } else {
    cp -= 0x10000;
    out.push_back(static_cast<char16_t>(0xD800 + (cp >> 10)));
    out.push_back(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
  }
}

}  // namespace

std::u16string Utf8ToUtf16(std::string_view in) {
  std::u16string out;
  out.reserve(in.size());
  size_t i = 0;
  const size_t n = in.size();
  while (i < n) {
    const auto b0 = static_cast<uint8_t>(in[i]);
    if (b0 < 0x80) {
      out.push_back(b0);
      ++i;
      continue;
    }
    int extra = 0;
    uint32_t cp = 0;
    uint32_t min = 0;
    if ((b0 & 0xE0) == 0xC0) {
      extra = 1, cp = b0 & 0x1F, min = 0x80;
    } else if ((b0 & 0xF0) == 0xE0) {
      extra = 2, cp = b0 & 0x0F, min = 0x800;
    } else if ((b0 & 0xF8) == 0xF0) {
      extra = 3, cp = b0 & 0x07, min = 0x10000;
    } else {
      out.push_back(kReplacement);
      ++i;
      continue;
    }
    size_t j = i + 1;
    bool ok = true;
    for (int k = 0; k < extra; ++k, ++j) {
      if (j >= n || (static_cast<uint8_t>(in[j]) & 0xC0) != 0x80) {
        ok = false;
        break;
      }
      cp = (cp << 6) | (static_cast<uint8_t>(in[j]) & 0x3F);
    }
    if (!ok || cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
      out.push_back(kReplacement);
      i = j;  // resume at the first byte that did not fit
      continue;
    }
    AppendCodePoint(out, cp);
    i = j;
  }
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
    const __m128i high = _mm_set1_epi16(static_cast<short>(0xFF80));
    const __m128i zero = _mm_setzero_si128();
    while (n - i >= 16) {
      const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i));
      const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i + 8));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(o), _mm_packus_epi16(a, b));
      const auto ascii = static_cast<unsigned>(_mm_movemask_epi8(
          _mm_packs_epi16(_mm_cmpeq_epi16(_mm_and_si128(a, high), zero), _mm_cmpeq_epi16(_mm_and_si128(b, high), zero))));
      if (ascii != 0xFFFF) {
        const auto run = static_cast<size_t>(__builtin_ctz(~ascii));
        o += run;
        i += run;
        break;
      }
      o += 16;
      i += 16;
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
