// Checking that bytes are UTF-8 text (task files, command-line words, files
// to inspect), and where they stop being it.
#pragma once

#include <string>
#include <string_view>

namespace qmhost {

// The first byte of `text` that does not start a valid UTF-8 sequence, or
// npos when all of it is UTF-8. A sequence cut off at the very end counts as
// valid when `cutAtEnd` is set (the start of a file read only in part).
size_t FirstInvalidUtf8(std::string_view text, bool cutAtEnd = false);

// "0x" and two upper-case hexadecimal digits.
std::string HexByte(unsigned char c);

}  // namespace qmhost
