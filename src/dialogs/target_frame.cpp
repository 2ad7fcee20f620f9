#include "dialogs/target_frame.h"

#include "boundary/param_parser.h"
#include "core/messages.h"
#include "core/step_keys.h"

namespace qm {

void TargetFrame::Load(const TQMParamParser& block) {
  saveToVariable = block.GetBool(keys::kSaveToVariable);
  variableName = block.GetString(keys::kSaveVariable);
  saveToFile = block.GetBool(keys::kSaveToFile);
  fileName = block.GetString(keys::kTargetFileName);
  encoding = EncodingFromIndex(block.GetInteger(keys::kTargetEncoding));
  keepFormat = block.GetBool(keys::kNotChangeFormat);
}

void TargetFrame::Save(TQMParamParser& block) const {
  block.SetBool(keys::kSaveToVariable, saveToVariable);
  block.SetString(keys::kSaveVariable, variableName);
  block.SetBool(keys::kSaveToFile, saveToFile);
  block.SetString(keys::kTargetFileName, fileName);
  block.SetInteger(keys::kTargetEncoding, static_cast<int32_t>(encoding));
  block.SetBool(keys::kNotChangeFormat, keepFormat);
}

std::u16string_view TargetFrame::ProducedVariable() const {
  return saveToVariable ? std::u16string_view(variableName) : std::u16string_view();
}

bool TargetFrame::IsEnabled(TargetControl control) const {
  switch (control) {
    case TargetControl::VariableName: return saveToVariable;
    case TargetControl::FileName:
    case TargetControl::FileBrowse:
    case TargetControl::EncodingLabel:
    case TargetControl::Encoding: return saveToFile;
    case TargetControl::SaveToVariable:
    case TargetControl::SaveToFile:
    case TargetControl::KeepFormat: return true;
  }
  return true;
}

CheckResult<TargetControl> TargetFrame::Check() const {
  if (saveToVariable && IsBlank(variableName)) return Fail(TargetControl::VariableName, msg::kValueEmpty);
  if (saveToFile && IsBlank(fileName)) return Fail(TargetControl::FileName, msg::kValueEmpty);
  return std::nullopt;
}

}  // namespace qm
