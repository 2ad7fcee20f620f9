#include "dialogs/remove_duplicates_editor.h"

#include "boundary/param_parser.h"
#include "core/convert.h"

namespace qm {

void RemoveDuplicatesEditor::Load(const TQMParamParser& block) {
  caseSensitive = block.GetBoolDef(u"casesensitive", false);
  variable = block.GetString(u"varname");
  pages.Load(block);
}

void RemoveDuplicatesEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetBool(u"casesensitive", caseSensitive);
  block.SetString(u"varname", Trim(variable));
  pages.Save(block);
  WriteProducedVariables(block, ProducedVariables());
}

}  // namespace qm
