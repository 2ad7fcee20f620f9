#include "dialogs/information_editor.h"

#include "boundary/param_parser.h"

namespace qm {

void InformationEditor::Load(const TQMParamParser& block) {
  recordCountVar = block.GetString(u"recordcountvar");
  columnCountVar = block.GetString(u"colcountvar");
  pages.Load(block);
}

void InformationEditor::Save(TQMParamParser& block) const {
  block.Clear();
  block.SetString(u"recordcountvar", recordCountVar);
  block.SetString(u"colcountvar", columnCountVar);
  pages.Save(block);
  WriteProducedVariables(block, ProducedVariables());
}

}  // namespace qm
