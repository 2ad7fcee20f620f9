#include "table/csv_format_settings.h"

#include "plugin/host_services.h"
#include "plugin/param_parser.h"

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

TCSVFormatSettings ReadFormatSettings(const TQMParamParser& params) {
  TCSVFormatSettings settings;
  const int32_t delimiter = params.GetIntegerDef(u"delimiter", 2);
  char16_t custom = 0;
  if (delimiter == 4) {
    const std::u16string other = ExpandVariables(params.GetString(u"otherchar"));
    custom = other.empty() ? char16_t{0} : other.front();
  }
  settings.Delimiter = DelimiterFromIndex(delimiter, custom);
  settings.QuoteChar = QuoteFromIndex(params.GetIntegerDef(u"quotechar", 0));
  settings.StrictDelimiter = params.GetBoolDef(u"strictdelimiter", true) ? -1 : 0;
  return settings;
}

}  // namespace qm
