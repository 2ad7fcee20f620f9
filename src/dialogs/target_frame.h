// The CSV target frame of Save Data: a host variable, a file, or both, the
// file's encoding and whether the table keeps its own format.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "dialogs/dialog_check.h"
#include "table/text_encoding.h"

namespace qm {

class TQMParamParser;

enum class TargetControl : uint8_t {
  SaveToVariable,
  VariableName,
  SaveToFile,
  FileName,
  FileBrowse,
  EncodingLabel,
  Encoding,
  KeepFormat,
};

class TargetFrame {
 public:
  static constexpr std::u16string_view kSaveToVariable = u"Save to variable:";
  static constexpr std::u16string_view kSaveToFile = u"Save to file:";
  static constexpr std::u16string_view kEncodingLabel = u"Encoding:";
  static constexpr std::u16string_view kKeepFormat = u"Keep original CSV format";
  static constexpr std::u16string_view kVariableHint = u"Enter variable name";
  static constexpr std::u16string_view kFileHint = u"Enter file name";
  static constexpr std::u16string_view kBrowseExtension = u"CSV";
  static constexpr std::u16string_view kBrowseFilter = u"CSV files|*.csv|Text files|*.txt|All files|*.*";

  // The six keys with their defaults; an encoding that selects no item is
  // "Default".
  void Load(const TQMParamParser& block);
  // `savetovariable`, `savevariable`, `savetofile`, `targetfilename`,
  // `targetencoding`, `notchangeformat`; names as typed.
  void Save(TQMParamParser& block) const;

  // The variable the step sets: the name as typed while "Save to variable:"
  // is checked, else none.
  std::u16string_view ProducedVariable() const;

  bool IsEnabled(TargetControl control) const;
  // A checked target needs its name: the variable first, then the file.
  CheckResult<TargetControl> Check() const;

  bool saveToVariable = false;
  std::u16string variableName;
  bool saveToFile = false;
  std::u16string fileName;
  TextEncoding encoding = TextEncoding::Default;
  bool keepFormat = true;
};

}  // namespace qm
