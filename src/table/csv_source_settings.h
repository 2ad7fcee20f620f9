// Where a table comes from (the task's table, a file or typed text) and how
// its lines are skipped, and the load that applies those settings.
#pragma once

#include <cstdint>
#include <string>

#include "table/text_encoding.h"

namespace qm {

class TSimpleCSVDataClass;
struct TCSVFormatSettings;

enum class CsvSource : int32_t { PreviousAction = 0, File = 1, Text = 2 };

struct TCSVSourceSettings {
  CsvSource Source = CsvSource::PreviousAction;
  std::u16string FileName;
  TextEncoding Encoding = TextEncoding::Default;
  std::u16string Text;  // the lines, each followed by CR LF
  int32_t SkipFirst = 0;
  bool SkipEmpty = true;
  bool SkipComments = false;
  std::u16string CommentChars = u"#";
  bool HeaderLine = false;
};

// Loads a table from the settings' file or text (not for PreviousAction):
// the reading options and format are applied first, in the order the loaders
// rely on, and the encoding only for a file. False with the table's
// LastError() on failure.
bool LoadFromSource(TSimpleCSVDataClass& table, const TCSVSourceSettings& source, const TCSVFormatSettings& format);

}  // namespace qm
