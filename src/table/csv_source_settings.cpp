#include "table/csv_source_settings.h"

#include "core/convert.h"
#include "core/messages.h"
#include "plugin/host_services.h"
#include "plugin/param_parser.h"
#include "table/csv_format_settings.h"
#include "table/job_table.h"
#include "table/simple_csv_object.h"

namespace qm {

std::u16string SourceLineKey(int32_t index) { return u"line" + IntToHex(static_cast<uint32_t>(index), 8); }

TCSVSourceSettings ReadSourceSettings(const TQMParamParser& params) {
  TCSVSourceSettings s;
  const int32_t source = params.GetIntegerDef(u"source", 0);
  s.Source = source == 1 ? CsvSource::File : (source == 2 ? CsvSource::Text : CsvSource::PreviousAction);
  s.FileName = ExpandVariables(params.GetString(u"filename"));
  s.Encoding = EncodingFromIndex(params.GetIntegerDef(u"encoding", 0));
  const int32_t lineCount = params.GetIntegerDef(u"linecount", 0);
  for (int32_t i = 0; i < lineCount; ++i) {
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
  s.HeaderLine = params.GetBoolDef(u"headerline", false) ? -1 : 0;
  return s;
}

bool LoadFromSource(TSimpleCSVDataClass& table, const TCSVSourceSettings& source, const TCSVFormatSettings& format) {
  table.SetSkipFirst(source.SkipFirst);
  table.SetSkipEmpty(source.SkipEmpty);
  table.SetSkipComments(source.SkipComments);
  table.SetCommentChars(source.CommentChars);
  table.SetHeaderLine(source.HeaderLine != 0);
  table.SetDelimiter(format.Delimiter);
  table.SetQuoteChar(format.QuoteChar);
  table.SetStrictDelimiter(format.StrictDelimiter != 0);
  if (source.Source != CsvSource::File) return table.LoadFromText(source.Text);
  table.SetEncoding(source.Encoding);
  return table.LoadFromCSVFile(source.FileName);
}

bool ObtainJobTable(const QmTaskBridge& task, const TQMParamParser& params, TSimpleCSVDataClass*& table,
                    uint32_t& code, std::u16string& message) {
  message.clear();
  table = nullptr;
  const TCSVSourceSettings source = ReadSourceSettings(params);
  const TCSVFormatSettings format = ReadFormatSettings(params);
  TSimpleCSVDataClass* t = GetJobTable(task);
  if (!t) {
    if (source.Source == CsvSource::PreviousAction) {
      code = kObtainNoTable;
      message = msg::kDataNotDefined;
      return false;
    }
    // Attached before it is loaded: it stays with the task even if the load fails.
    t = new TSimpleCSVDataClass();
    SetJobTable(task, t);
  }
  if (source.Source != CsvSource::PreviousAction && !LoadFromSource(*t, source, format)) {
    code = source.Source == CsvSource::File ? kObtainFileFailed : kObtainTextFailed;
    message = t->LastError();
    return false;
  }
  table = t;
  return true;
}

}  // namespace qm
