#include "task/step_settings.h"

#include "boundary/host_services.h"
#include "boundary/param_parser.h"
#include "core/convert.h"
#include "core/text_lines.h"

namespace qm {

std::u16string SourceLineKey(int32_t index) { return u"line" + IntToHex(static_cast<uint32_t>(index), 8); }

TCSVSourceSettings ReadSourceSettings(const TQMParamParser& params) {
  TCSVSourceSettings s;
  const int32_t source = params.GetIntegerDef(u"source", 0);
  s.Source = source == 1 ? CsvSource::File : (source == 2 ? CsvSource::Text : CsvSource::PreviousAction);
  s.FileName = ExpandVariables(params.GetString(u"filename"));
  s.Encoding = EncodingFromIndex(params.GetIntegerDef(u"encoding", 0));
  // A line the block does not hold reads as empty and adds nothing, so only
  // the lines present are read, however large the count.
  const int32_t lineCount = params.GetIntegerDef(u"linecount", 0);
  for (const int32_t i : params.PresentIndices(u"line", lineCount, &SourceLineKey)) {
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
