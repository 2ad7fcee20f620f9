// Windows: the system ANSI code page through the system's conversions.
#include <windows.h>

#include <climits>

#include "platform/ansi_codepage.h"

namespace qm {

namespace {

// Conversions take int counts; larger inputs go in slices. A slice never
// ends inside a double-byte character because callers cut their input at
// line breaks, and a line break byte is never a trail byte.
constexpr size_t kSlice = size_t{1} << 30;

// Best-fit mapping would turn, say, a Polish letter into a plain one on a
// Western system; the plug-in writes '?' for anything the page lacks, as the
// native build does. The UTF-8 system page does not accept the flag.
DWORD EncodeFlags() {
  static const DWORD flags = GetACP() == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;
  return flags;
}

}  // namespace

size_t AnsiMaxUnits(size_t byteCount) { return byteCount; }

size_t AnsiMaxBytes(size_t unitCount) {
  CPINFO info{};
  static const UINT maxChar = GetCPInfo(CP_ACP, &info) ? info.MaxCharSize : 4;
  return unitCount * maxChar;
}

size_t AnsiDecode(const char* bytes, size_t count, char16_t* out) {
  size_t written = 0;
  for (size_t done = 0; done < count;) {
    const size_t part = count - done < kSlice ? count - done : kSlice;
    written += static_cast<size_t>(MultiByteToWideChar(CP_ACP, 0, bytes + done, static_cast<int>(part),
                                                       reinterpret_cast<wchar_t*>(out + written), INT_MAX));
    done += part;
  }
  return written;
}

size_t AnsiEncode(const char16_t* text, size_t count, char* out) {
  size_t written = 0;
  for (size_t done = 0; done < count;) {
    size_t part = count - done < kSlice ? count - done : kSlice;
    // Keep a surrogate pair in one slice.
    if (done + part < count && text[done + part - 1] >= 0xD800 && text[done + part - 1] <= 0xDBFF) --part;
    written +=
        static_cast<size_t>(WideCharToMultiByte(CP_ACP, EncodeFlags(), reinterpret_cast<const wchar_t*>(text + done),
                                                static_cast<int>(part), out + written, INT_MAX, nullptr, nullptr));
    done += part;
  }
  return written;
}

}  // namespace qm
