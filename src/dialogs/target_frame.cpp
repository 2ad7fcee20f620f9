#include "dialogs/target_frame.h"

#include "boundary/param_parser.h"
#include "core/messages.h"

namespace qm {

void TargetFrame::Load(const TQMParamParser& block) {
  saveToVariable = block.GetBoolDef(u"savetovariable", false);
  variableName = block.GetString(u"savevariable");
  saveToFile = block.GetBoolDef(u"savetofile", false);
  fileName = block.GetString(u"targetfilename");
  encoding = EncodingFromIndex(block.GetIntegerDef(u"targetencoding", 0));
  keepFormat = block.GetBoolDef(u"notchangeformat", true);
}

void TargetFrame::Save(TQMParamParser& block) const {
  block.SetBool(u"savetovariable", saveToVariable);
  block.SetString(u"savevariable", variableName);
  block.SetBool(u"savetofile", saveToFile);
  block.SetString(u"targetfilename", fileName);
  block.SetInteger(u"targetencoding", static_cast<int32_t>(encoding));
  block.SetBool(u"notchangeformat", keepFormat);
}

std::u16string_view TargetFrame::ProducedVariable() const {
  return saveToVariable ? std::u16string_view(variableName) : std::u16string_view();
}

bool TargetFrame::IsEnabled(TargetControl control) const {
  switch (control) {
    case TargetControl::VariableName:
      return saveToVariable;
    case TargetControl::FileName:
    case TargetControl::FileBrowse:
    case TargetControl::EncodingLabel:
    case TargetControl::Encoding:
      return saveToFile;
    case TargetControl::SaveToVariable:
    case TargetControl::SaveToFile:
    case TargetControl::KeepFormat:
      return true;
  }
  return true;
}

CheckResult<TargetControl> TargetFrame::Check() const {
  if (saveToVariable && IsBlank(variableName)) return Fail(TargetControl::VariableName, msg::kValueEmpty);
  if (saveToFile && IsBlank(fileName)) return Fail(TargetControl::FileName, msg::kValueEmpty);
  return std::nullopt;
}

}  // namespace qm
