// Conversions between UTF-16 (the plug-in's text) and UTF-8 (files, consoles,
// exception texts). Malformed input never fails: it becomes U+FFFD.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qm {

std::u16string Utf8ToUtf16(std::string_view utf8);
std::string Utf16ToUtf8(std::u16string_view utf16);
// The same into `out`, which needs room for 3 * count bytes; returns the
// bytes written.
size_t EncodeUtf8(const char16_t* text, size_t count, char* out);

// Plain ASCII text widened unit by unit (for literals and numbers).
std::u16string Widen(std::string_view ascii);

}  // namespace qm
