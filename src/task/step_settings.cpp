#include "task/step_settings.h"

#include "boundary/host_services.h"
#include "boundary/param_parser.h"
#include "core/convert.h"
#include "core/step_keys.h"
#include "core/text_lines.h"

namespace qm {

namespace {
std::u16string SourceLineKey(int32_t index) { return keys::IndexedName(keys::kLine, index); }
}  // namespace

TCSVSourceSettings ReadSourceSettings(const TQMParamParser& params) {
  TCSVSourceSettings s;
  const int32_t source = params.GetInteger(keys::kSource);
  s.Source = source == 1 ? CsvSource::File : (source == 2 ? CsvSource::Text : CsvSource::PreviousAction);
  s.FileName = ExpandVariables(params.GetString(keys::kFileName));
  s.Encoding = EncodingFromIndex(params.GetInteger(keys::kEncoding));
  // A line the block does not hold reads as empty and adds nothing, so only
  // the lines present are read, however large the count.
  const int32_t lineCount = params.GetInteger(keys::kLineCount);
  for (const int32_t i : params.PresentIndices(keys::kLine.name, lineCount, &SourceLineKey)) {
    // An expanded line may hold breaks of its own; an empty one adds nothing.
    for (const auto& line : SplitLines(ExpandVariables(params.GetString(keys::kLine, i)))) {
      s.Text += line;
      s.Text += u"\r\n";
    }
  }
  s.SkipFirst = params.GetInteger(keys::kSkipFirst);
  s.SkipEmpty = params.GetBool(keys::kSkipEmpty);
  s.SkipComments = params.GetBool(keys::kSkipComments);
  s.CommentChars = ExpandVariables(params.GetString(keys::kCommentChars));
  if (Trim(s.CommentChars).empty()) s.SkipComments = false;
  s.HeaderLine = params.GetBool(keys::kHeaderLine);
  return s;
}

TCSVFormatSettings ReadFormatSettings(const TQMParamParser& params) {
  TCSVFormatSettings settings;
  const int32_t delimiter = params.GetInteger(keys::kDelimiter);
  char16_t custom = 0;
  if (delimiter == 4) {
    const std::u16string other = ExpandVariables(params.GetString(keys::kOtherChar));
    custom = other.empty() ? char16_t{0} : other.front();
  }
  settings.Delimiter = DelimiterFromIndex(delimiter, custom);
  settings.QuoteChar = QuoteFromIndex(params.GetInteger(keys::kQuoteChar));
  settings.StrictDelimiter = params.GetBool(keys::kStrictDelimiter);
  return settings;
}

TCSVTargetSettings ReadTargetSettings(const TQMParamParser& params) {
  TCSVTargetSettings s;
  if (params.GetBool(keys::kSaveToVariable)) s.VarName = ExpandVariables(params.GetString(keys::kSaveVariable));
  if (params.GetBool(keys::kSaveToFile)) s.FileName = ExpandVariables(params.GetString(keys::kTargetFileName));
  s.Encoding = EncodingFromIndex(params.GetInteger(keys::kTargetEncoding));
  s.KeepFormat = params.GetBool(keys::kNotChangeFormat);
  return s;
}

}  // namespace qm
