// Where an action's table comes from (the task's table, a file or typed
// text) and how its lines are skipped; and the routine every table action
// uses to obtain the task's table.
#pragma once

#include <cstdint>
#include <string>

#include "table/text_encoding.h"

namespace qm {

class QmTaskBridge;
class TQMParamParser;
class TSimpleCSVDataClass;

enum class CsvSource : int32_t { PreviousAction = 0, File = 1, Text = 2 };

struct TCSVSourceSettings {
  CsvSource Source = CsvSource::PreviousAction;
  std::u16string FileName;  // expanded
  TextEncoding Encoding = TextEncoding::Default;
  std::u16string Text;  // the stored lines, expanded, each followed by CR LF
  int32_t SkipFirst = 0;
  bool SkipEmpty = true;
  bool SkipComments = false;
  std::u16string CommentChars = u"#";  // expanded
  int32_t HeaderLine = 0;              // 32-bit boolean
};

TCSVSourceSettings ReadSourceSettings(const TQMParamParser& params);

// The stored key of text line `index`: "line" and 8 upper-case hex digits.
std::u16string SourceLineKey(int32_t index);

// Loads a table from the settings' file or text (not for PreviousAction):
// the reading options and format are applied first, in the order the loaders
// rely on, and the encoding only for a file. False with the table's
// LastError() on failure.
struct TCSVFormatSettings;
bool LoadFromSource(TSimpleCSVDataClass& table, const TCSVSourceSettings& source, const TCSVFormatSettings& format);

// Codes of ObtainJobTable.
enum : uint32_t { kObtainNoTable = 1, kObtainFileFailed = 2, kObtainTextFailed = 3 };

// The task's table for this step: the attached one for "Prev. CSV action",
// else a table attached at once (created when the task has none) and loaded
// from the file or text. False with a code and message on failure.
bool ObtainJobTable(const QmTaskBridge& task, const TQMParamParser& params, TSimpleCSVDataClass*& table,
                    uint32_t& code, std::u16string& message);

}  // namespace qm
