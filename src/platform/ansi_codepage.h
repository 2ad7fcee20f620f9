// The system's ANSI code page, used by the "Default" and "ANSI" encodings.
// Windows converts through the system; the native build uses Windows-1252,
// the legacy single-byte default, so that both builds read and write the
// same bytes for the same text on a Western system.
#pragma once

#include <cstddef>

namespace qm {

// The most UTF-16 units `byteCount` bytes can decode to.
size_t AnsiMaxUnits(size_t byteCount);
// The most bytes `unitCount` UTF-16 units can encode to.
size_t AnsiMaxBytes(size_t unitCount);

// Decodes `count` bytes into `out` (room for AnsiMaxUnits(count) units) and
// returns the number of units written. Never fails.
size_t AnsiDecode(const char* bytes, size_t count, char16_t* out);
// Encodes `count` units into `out` (room for AnsiMaxBytes(count) bytes) and
// returns the number of bytes written. A character the code page lacks
// becomes '?'.
size_t AnsiEncode(const char16_t* text, size_t count, char* out);

}  // namespace qm
