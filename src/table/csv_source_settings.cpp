#include "table/csv_source_settings.h"

#include "table/csv_format_settings.h"
#include "table/simple_csv_object.h"

namespace qm {

bool LoadFromSource(TSimpleCSVDataClass& table, const TCSVSourceSettings& source, const TCSVFormatSettings& format) {
  table.SetSkipFirst(source.SkipFirst);
  table.SetSkipEmpty(source.SkipEmpty);
  table.SetSkipComments(source.SkipComments);
  table.SetCommentChars(source.CommentChars);
  table.SetHeaderLine(source.HeaderLine);
  table.SetDelimiter(format.Delimiter);
  table.SetQuoteChar(format.QuoteChar);
  table.SetStrictDelimiter(format.StrictDelimiter);
  if (source.Source != CsvSource::File) return table.LoadFromText(source.Text);
  table.SetEncoding(source.Encoding);
  return table.LoadFromCSVFile(source.FileName);
}

}  // namespace qm
