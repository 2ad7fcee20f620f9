#include "task/step_settings.h"

#include "boundary/host_services.h"
#include "boundary/param_parser.h"
#include "core/convert.h"
#include "core/text_lines.h"

#include <algorithm>
#include <vector>

namespace qm {

namespace {

// The indexes below `count` of the typed-text lines the block holds (keys
// "line" and 8 hexadecimal digits, any case), in order. A missing line adds
// nothing, so a count far past the block's lines costs no more than the lines.
std::vector<int32_t> StoredLineIndexes(const TQMParamParser& params, int32_t count) {
  std::vector<int32_t> indexes;
  for (const std::u16string& line : SplitLines(params.Text())) {
    const std::u16string_view name = std::u16string_view(line).substr(0, line.find(u'='));
    if (name.size() != 12 || (name[0] | 0x20) != u'l' || (name[1] | 0x20) != u'i' || (name[2] | 0x20) != u'n' ||
        (name[3] | 0x20) != u'e')
      continue;
    uint32_t index = 0;
    bool hex = true;
    for (const char16_t c : name.substr(4)) {
      const char16_t lower = c | 0x20;
      const int digit = c >= u'0' && c <= u'9' ? c - u'0' : (lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1);
      hex = hex && digit >= 0;
      index = index << 4 | static_cast<uint32_t>(digit & 15);
    }
    if (hex && count > 0 && index < static_cast<uint32_t>(count)) indexes.push_back(static_cast<int32_t>(index));
  }
  std::sort(indexes.begin(), indexes.end());
  indexes.erase(std::unique(indexes.begin(), indexes.end()), indexes.end());
  return indexes;
}

}  // namespace

std::u16string SourceLineKey(int32_t index) { return u"line" + IntToHex(static_cast<uint32_t>(index), 8); }

TCSVSourceSettings ReadSourceSettings(const TQMParamParser& params) {
  TCSVSourceSettings s;
  const int32_t source = params.GetIntegerDef(u"source", 0);
  s.Source = source == 1 ? CsvSource::File : (source == 2 ? CsvSource::Text : CsvSource::PreviousAction);
  s.FileName = ExpandVariables(params.GetString(u"filename"));
  s.Encoding = EncodingFromIndex(params.GetIntegerDef(u"encoding", 0));
  const int32_t lineCount = params.GetIntegerDef(u"linecount", 0);
  for (const int32_t i : StoredLineIndexes(params, lineCount)) {
    // An expanded line may hold breaks of its own; an empty one adds nothing.
    for (const auto& line : SplitLines(ExpandVariables(params.GetString(SourceLineKey(i))))) {
      s.Text += line;
      s.Text += u"\r\n";
    }
  }
  s.SkipFirst = params.GetIntegerDef(u"skipfirst", 0);
  s.SkipEmpty = params.GetBoolDef(u"skipempty", true);
  s.SkipComments = params.GetBoolDef(u"skipcomments", false);
  s.CommentChars = ExpandVariables(params.GetStringDef(u"commentchars", u"#"));
  if (Trim(s.CommentChars).empty()) s.SkipComments = false;
  s.HeaderLine = params.GetBoolDef(u"headerline", false);
  return s;
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
  settings.StrictDelimiter = params.GetBoolDef(u"strictdelimiter", true);
  return settings;
}

TCSVTargetSettings ReadTargetSettings(const TQMParamParser& params) {
  TCSVTargetSettings s;
  if (params.GetBoolDef(u"savetovariable", false)) s.VarName = ExpandVariables(params.GetString(u"savevariable"));
  if (params.GetBoolDef(u"savetofile", false)) s.FileName = ExpandVariables(params.GetString(u"targetfilename"));
  s.Encoding = EncodingFromIndex(params.GetIntegerDef(u"targetencoding", 0));
  s.KeepFormat = params.GetBoolDef(u"notchangeformat", true);
  return s;
}

}  // namespace qm
