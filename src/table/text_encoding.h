// The text encodings a table file can be read and written in. The index order
// is the one stored in step parameters ("Default", "UTF-7", "UTF-8",
// "Unicode", "ASCII", "ANSI").
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qm {

enum class TextEncoding : int32_t {
  Default = 0,  // the system ANSI code page
  UTF7 = 1,
  UTF8 = 2,
  Unicode = 3,  // UTF-16 little-endian
  ASCII = 4,
  ANSI = 5,  // the system ANSI code page
};

// The encoding of a stored index; any value outside 0..5 is Default.
TextEncoding EncodingFromIndex(int32_t index);

// The byte-order mark written before the text (empty for the code pages and
// UTF-7). Reading skips it when the file starts with it.
std::string_view ByteOrderMark(TextEncoding encoding);

// Decoding never fails: malformed bytes become U+FFFD (UTF-8, UTF-16, UTF-7)
// or '?' (ASCII). `out` must have room for MaxDecodedUnits(count) units; the
// number of units written is returned.
size_t MaxDecodedUnits(TextEncoding encoding, size_t byteCount);
size_t DecodeInto(TextEncoding encoding, const char* bytes, size_t count, char16_t* out);

// Encoding never fails: a character the encoding cannot hold becomes '?'
// (ASCII and the code pages) or U+FFFD (a lone surrogate in UTF-8). `out`
// must have room for MaxEncodedBytes(count) bytes.
size_t MaxEncodedBytes(TextEncoding encoding, size_t unitCount);
size_t EncodeInto(TextEncoding encoding, const char16_t* text, size_t count, char* out);

// Whole-text conversions; no byte-order mark is read or written.
std::u16string DecodeBytes(std::string_view bytes, TextEncoding encoding);
std::string EncodeText(std::u16string_view text, TextEncoding encoding);

}  // namespace qm
