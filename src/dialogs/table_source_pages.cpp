#include "dialogs/table_source_pages.h"

namespace qm {

void TableSourcePages::Load(const TQMParamParser& block) {
  source.Load(block);
  format.Load(block);
}

void TableSourcePages::Save(TQMParamParser& block) const {
  source.Save(block);
  format.Save(block);
}

}  // namespace qm
