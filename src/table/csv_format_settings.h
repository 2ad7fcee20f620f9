// The format keys of a step: delimiter, quote character, strict delimiter.
#pragma once

#include <cstdint>

namespace qm {

class TQMParamParser;

struct TCSVFormatSettings {
  char16_t Delimiter = u';';
  char16_t QuoteChar = u'"';
  int32_t StrictDelimiter = -1;  // 32-bit boolean
};

// `delimiter` (default 2, semicolon), `otherchar` (expanded; its first
// character, or 0 when empty, for delimiter choice 4), `quotechar` (default
// 0, double quote), `strictdelimiter` (default true).
TCSVFormatSettings ReadFormatSettings(const TQMParamParser& params);

char16_t DelimiterFromIndex(int32_t index, char16_t customChar);
char16_t QuoteFromIndex(int32_t index);

}  // namespace qm
