#include "table/csv_format_settings.h"

namespace qm {

char16_t DelimiterFromIndex(int32_t index, char16_t customChar) {
  switch (index) {
    case 0: return u',';
    case 1: return u':';
    case 2: return u';';
    case 3: return u'\t';
    case 4: return customChar;
    default: return u';';
  }
}

char16_t QuoteFromIndex(int32_t index) {
  switch (index) {
    case 1: return u'\'';
    case 2: return 0;
    default: return u'"';
  }
}

}  // namespace qm
