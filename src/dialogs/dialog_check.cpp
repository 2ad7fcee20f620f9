#include "dialogs/dialog_check.h"

#include "boundary/param_parser.h"
#include "boundary/plugin_params.h"
#include "core/convert.h"

namespace qm {

bool IsBlank(std::u16string_view text) { return Trim(text).empty(); }

void WriteProducedVariables(TQMParamParser& block, const std::vector<std::u16string_view>& names) {
  TProducedVariables produced;
  for (const auto name : names) produced.AddVarName(name);
  block.SetString(produced.ParameterName(), produced.GetVariables());
}

}  // namespace qm
