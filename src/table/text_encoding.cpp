#include "table/text_encoding.h"

#include <bit>
#include <cstring>

#include "core/simd_copy.h"
#include "core/utf.h"
#include "platform/ansi_codepage.h"

namespace qm {

namespace {

constexpr char16_t kReplacement = 0xFFFD;

// ---- UTF-16 little-endian -------------------------------------------------

// Units are taken as they are, lone surrogates included, so any even byte
// count survives a round trip; an odd last byte becomes U+FFFD.
size_t DecodeUtf16Le(const char* in, size_t n, char16_t* out) {
  const auto* s = reinterpret_cast<const uint8_t*>(in);
  const size_t units = n / 2;
  for (size_t k = 0; k < units; ++k) out[k] = static_cast<char16_t>(s[2 * k] | (s[2 * k + 1] << 8));
  if (n % 2) {
    out[units] = kReplacement;
    return units + 1;
  }
  return units;
}

size_t EncodeUtf16Le(const char16_t* s, size_t n, char* out) {
  if constexpr (std::endian::native == std::endian::little) {
    // The units already are these bytes; the writer encodes a line at a
    // time, so the copy is mostly a short one.
    CopyBytes(out, s, 2 * n);
  } else {
    auto* o = reinterpret_cast<uint8_t*>(out);
    for (size_t k = 0; k < n; ++k) {
      o[2 * k] = static_cast<uint8_t>(s[k] & 0xFF);
      o[2 * k + 1] = static_cast<uint8_t>(s[k] >> 8);
    }
  }
  return 2 * n;
}

// ---- ASCII ------------------------------------------------------------------

size_t DecodeAscii(const char* in, size_t n, char16_t* out) {
  const auto* s = reinterpret_cast<const uint8_t*>(in);
  for (size_t k = 0; k < n; ++k) out[k] = s[k] < 0x80 ? s[k] : u'?';
  return n;
}

size_t EncodeAscii(const char16_t* s, size_t n, char* out) {
  for (size_t k = 0; k < n; ++k) out[k] = s[k] < 0x80 ? static_cast<char>(s[k]) : '?';
  return n;
}

// ---- UTF-7 (RFC 2152) -------------------------------------------------------

constexpr char kBase64[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

int Base64Value(uint8_t c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+') return 62;
  if (c == '/') return 63;
  return -1;
}

// Written as themselves: the RFC's set D and the white space characters.
// Everything else, the optional set O included, goes into base64 so that the
// output passes through any mail-safe channel.
bool DirectUtf7(char16_t c) {
  if ((c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9')) return true;
  switch (c) {
    case u'\'':
    case u'(':
    case u')':
    case u',':
    case u'-':
    case u'.':
    case u'/':
    case u':':
    case u'?':
    case u' ':
    case u'\t':
    case u'\r':
    case u'\n':
    case 0: return true;
    default: return false;
  }
}

// Tolerant: a shifted run ends at any byte that is not base64, leftover bits
// are dropped, "+-" is a plus sign, an empty run ("+" before another byte)
// yields nothing and bytes above 0x7F become U+FFFD.
size_t DecodeUtf7(const char* in, size_t n, char16_t* out) {
  const auto* s = reinterpret_cast<const uint8_t*>(in);
  char16_t* o = out;
  bool shifted = false;
  bool empty = false;
  uint32_t bits = 0;
  int count = 0;
  for (size_t i = 0; i < n; ++i) {
    const uint8_t c = s[i];
    if (shifted) {
      const int v = Base64Value(c);
      if (v >= 0) {
        empty = false;
        bits = (bits << 6) | static_cast<uint32_t>(v);
        count += 6;
        if (count >= 16) {
          count -= 16;
          *o++ = static_cast<char16_t>((bits >> count) & 0xFFFF);
        }
        bits &= (1u << count) - 1;
        continue;
      }
      shifted = false;
      bits = 0;
      count = 0;
      if (c == '-') {
        if (empty) *o++ = u'+';
        continue;
      }
    }
    if (c == '+') {
      shifted = true;
      empty = true;
      continue;
    }
    *o++ = c < 0x80 ? c : kReplacement;
  }
  return static_cast<size_t>(o - out);
}

size_t EncodeUtf7(const char16_t* s, size_t n, char* out) {
  char* o = out;
  bool shifted = false;
  uint32_t bits = 0;
  int count = 0;
  auto close = [&] {
    if (count > 0) *o++ = kBase64[(bits << (6 - count)) & 0x3F];
    *o++ = '-';
    shifted = false;
    bits = 0;
    count = 0;
  };
  for (size_t i = 0; i < n; ++i) {
    const char16_t c = s[i];
    if (DirectUtf7(c)) {
      if (shifted) close();
      *o++ = static_cast<char>(c);
    } else if (c == u'+') {
      if (shifted) close();
      *o++ = '+';
      *o++ = '-';
    } else {
      if (!shifted) {
        *o++ = '+';
        shifted = true;
      }
      bits = (bits << 16) | c;
      count += 16;
      while (count >= 6) {
        count -= 6;
        *o++ = kBase64[(bits >> count) & 0x3F];
      }
      bits &= (1u << count) - 1;
    }
  }
  if (shifted) close();
  return static_cast<size_t>(o - out);
}

}  // namespace

TextEncoding EncodingFromIndex(int32_t index) {
  return index >= 0 && index <= 5 ? static_cast<TextEncoding>(index) : TextEncoding::Default;
}

std::string_view ByteOrderMark(TextEncoding encoding) {
  switch (encoding) {
    case TextEncoding::UTF8: return "\xEF\xBB\xBF";
    case TextEncoding::Unicode: return "\xFF\xFE";
    default: return {};
  }
}

size_t MaxDecodedUnits(TextEncoding encoding, size_t byteCount) {
  switch (encoding) {
    case TextEncoding::Unicode: return byteCount / 2 + 1;
    case TextEncoding::Default:
    case TextEncoding::ANSI: return AnsiMaxUnits(byteCount);
    default: return byteCount;
  }
}

size_t DecodeInto(TextEncoding encoding, const char* bytes, size_t count, char16_t* out) {
  switch (encoding) {
    case TextEncoding::UTF7: return DecodeUtf7(bytes, count, out);
    case TextEncoding::UTF8: return DecodeUtf8(bytes, count, out);
    case TextEncoding::Unicode: return DecodeUtf16Le(bytes, count, out);
    case TextEncoding::ASCII: return DecodeAscii(bytes, count, out);
    default: return AnsiDecode(bytes, count, out);
  }
}

size_t MaxEncodedBytes(TextEncoding encoding, size_t unitCount) {
  switch (encoding) {
    case TextEncoding::UTF7: return unitCount * 5 + 2;  // "+xyz-" for a lone shifted unit
    case TextEncoding::UTF8: return unitCount * 3;
    case TextEncoding::Unicode: return unitCount * 2;
    case TextEncoding::ASCII: return unitCount;
    default: return AnsiMaxBytes(unitCount);
  }
}

size_t EncodeInto(TextEncoding encoding, const char16_t* text, size_t count, char* out) {
  switch (encoding) {
    case TextEncoding::UTF7: return EncodeUtf7(text, count, out);
    case TextEncoding::UTF8: return EncodeUtf8(text, count, out);
    case TextEncoding::Unicode: return EncodeUtf16Le(text, count, out);
    case TextEncoding::ASCII: return EncodeAscii(text, count, out);
    default: return AnsiEncode(text, count, out);
  }
}

std::u16string DecodeBytes(std::string_view bytes, TextEncoding encoding) {
  std::u16string text(MaxDecodedUnits(encoding, bytes.size()), u'\0');
  text.resize(DecodeInto(encoding, bytes.data(), bytes.size(), text.data()));
  return text;
}

std::string EncodeText(std::u16string_view text, TextEncoding encoding) {
  std::string bytes(MaxEncodedBytes(encoding, text.size()), '\0');
  bytes.resize(EncodeInto(encoding, text.data(), text.size(), bytes.data()));
  return bytes;
}

}  // namespace qm
