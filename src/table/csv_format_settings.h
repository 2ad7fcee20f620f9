// How a table's lines are cut: delimiter, quote character, strict delimiter;
// and the choice lists by which a step names them.
#pragma once

#include <cstdint>

namespace qm {

struct TCSVFormatSettings {
  char16_t Delimiter = u';';
  char16_t QuoteChar = u'"';  // 0: no quoting
  bool StrictDelimiter = true;
};

// Delimiter choice: 0 ",", 1 ":", 2 ";", 3 tab, 4 the custom character; any
// other index is ";".
char16_t DelimiterFromIndex(int32_t index, char16_t customChar);
// Quote choice: 0 double quote, 1 single quote, 2 none; any other is 0.
char16_t QuoteFromIndex(int32_t index);

}  // namespace qm
