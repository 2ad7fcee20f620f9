// Number and text conversions with the rules the stored parameters rely on.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qm {

// Integer text: leading blanks, an optional sign, decimal digits, or
// hexadecimal after "$", "x" or "0x". Nothing may follow the digits.
bool TryStrToInt(std::u16string_view text, int32_t& value);
// As TryStrToInt; a text that does not convert raises EConvertError.
int32_t StrToInt(std::u16string_view text);
int32_t StrToIntDef(std::u16string_view text, int32_t fallback);

// Unsigned decimal digits only (object identities kept in task variables).
bool TryStrToUInt64(std::u16string_view text, uint64_t& value);

std::u16string IntToStr(int64_t value);
std::u16string UIntToStr(uint64_t value);
// Upper-case hexadecimal, padded with zeros to at least `digits`.
std::u16string IntToHex(uint64_t value, int digits);

// Removes leading and trailing characters with codes 0 to 32.
std::u16string_view Trim(std::u16string_view text);

inline bool Contains(std::u16string_view text, char16_t ch) { return text.find(ch) != std::u16string_view::npos; }

}  // namespace qm
