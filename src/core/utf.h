// Conversions between UTF-16 (the plug-in's text) and UTF-8 (files, consoles,
// exception texts). Malformed input never fails: it becomes U+FFFD.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qm {

// A malformed UTF-8 sequence becomes one U+FFFD per maximal subpart (the
// longest prefix that could have started a valid sequence), as the Unicode
// standard recommends; decoding resumes at the first byte that did not fit.
std::u16string Utf8ToUtf16(std::string_view utf8);
// The same into `out`, which needs room for `count` units; returns the units
// written.
size_t DecodeUtf8(const char* bytes, size_t count, char16_t* out);
// Decodes the one UTF-8 character that starts at `bytes` (count > 0) into
// `out`, advancing it, and returns the bytes used. A malformed sequence gives
// one U+FFFD for its maximal subpart and never uses a byte below 0x80 other
// than its first, so line breaks are always seen.
size_t DecodeUtf8Sequence(const char* bytes, size_t count, char16_t*& out);
std::string Utf16ToUtf8(std::u16string_view utf16);
// The same into `out`, which needs room for 3 * count bytes; returns the
// bytes written.
size_t EncodeUtf8(const char16_t* text, size_t count, char* out);

// Plain ASCII text widened unit by unit (for literals and numbers).
std::u16string Widen(std::string_view ascii);

}  // namespace qm
