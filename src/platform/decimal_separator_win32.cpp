// Windows: the user locale's decimal separator, read on first use.
#include <windows.h>

#include "platform/decimal_separator.h"

namespace qm {

namespace {

char16_t ReadDecimalSeparator() {
  wchar_t buffer[8] = {};
  const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, buffer, 8);
  // The separator is one character in every shipped locale; fall back to the
  // point when the setting is missing or unusual.
  if (length < 2 || buffer[0] == 0) return u'.';
  return static_cast<char16_t>(buffer[0]);
}

}  // namespace

char16_t DecimalSeparator() {
  static const char16_t separator = ReadDecimalSeparator();
  return separator;
}

}  // namespace qm
