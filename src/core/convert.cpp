#include "core/convert.h"

#include "core/errors.h"

namespace qm {

namespace {

int HexDigit(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  return -1;
}

}  // namespace

bool TryStrToInt(std::u16string_view s, int32_t& value) {
  size_t i = 0;
  while (i < s.size() && s[i] == u' ') ++i;
  bool negative = false;
  if (i < s.size() && (s[i] == u'+' || s[i] == u'-')) negative = s[i++] == u'-';
  bool hex = false;
  if (i < s.size() && (s[i] == u'$' || s[i] == u'x' || s[i] == u'X')) {
    hex = true;
    ++i;
  } else if (i + 1 < s.size() && s[i] == u'0' && (s[i + 1] == u'x' || s[i + 1] == u'X')) {
    hex = true;
    i += 2;
  }
  if (i >= s.size()) return false;
  uint64_t magnitude = 0;
  for (; i < s.size(); ++i) {
    const int digit = hex ? HexDigit(s[i]) : (s[i] >= u'0' && s[i] <= u'9' ? s[i] - u'0' : -1);
    if (digit < 0) return false;
    magnitude = magnitude * (hex ? 16 : 10) + static_cast<uint64_t>(digit);
    if (magnitude > 0xFFFFFFFFull) return false;
  }
  if (hex) {
    // Hexadecimal covers all 32 bits: $FFFFFFFF is -1.
    const auto bits = static_cast<uint32_t>(magnitude);
    value = static_cast<int32_t>(negative ? 0u - bits : bits);
    return true;
  }
  if (negative ? magnitude > 2147483648ull : magnitude > 2147483647ull) return false;
  value = static_cast<int32_t>(negative ? -static_cast<int64_t>(magnitude) : static_cast<int64_t>(magnitude));
  return true;
}

int32_t StrToInt(std::u16string_view text) {
  int32_t value = 0;
  if (!TryStrToInt(text, value)) RaiseInvalidInteger(text);
  return value;
}

int32_t StrToIntDef(std::u16string_view text, int32_t fallback) {
  int32_t value = 0;
  return TryStrToInt(text, value) ? value : fallback;
}

bool TryStrToUInt64(std::u16string_view text, uint64_t& value) {
  if (text.empty() || text.size() > 20) return false;
  uint64_t v = 0;
  for (char16_t c : text) {
    if (c < u'0' || c > u'9') return false;
    const uint64_t digit = c - u'0';
    if (v > (UINT64_MAX - digit) / 10) return false;
    v = v * 10 + digit;
  }
  value = v;
  return true;
}

namespace {

std::u16string DecimalText(uint64_t magnitude, bool negative) {
  char16_t buf[24];
  char16_t* p = buf + 24;
  do {
    *--p = static_cast<char16_t>(u'0' + magnitude % 10);
    magnitude /= 10;
  } while (magnitude != 0);
  if (negative) *--p = u'-';
  return std::u16string(p, buf + 24);
}

}  // namespace

std::u16string UIntToStr(uint64_t value) { return DecimalText(value, false); }

std::u16string IntToStr(int64_t value) {
  return value >= 0 ? DecimalText(static_cast<uint64_t>(value), false)
                    : DecimalText(0 - static_cast<uint64_t>(value), true);
}

std::u16string IntToHex(uint64_t value, int digits) {
  std::u16string out;
  do {
    out.insert(out.begin(), u"0123456789ABCDEF"[value & 15]);
    value >>= 4;
  } while (value != 0);
  if (static_cast<int>(out.size()) < digits) out.insert(0, static_cast<size_t>(digits) - out.size(), u'0');
  return out;
}

std::u16string_view Trim(std::u16string_view text) {
  size_t b = 0;
  size_t e = text.size();
  while (b < e && text[b] <= u' ') ++b;
  while (e > b && text[e - 1] <= u' ') --e;
  return text.substr(b, e - b);
}

}  // namespace qm
