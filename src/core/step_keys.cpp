#include "core/step_keys.h"

#include "core/convert.h"

namespace qm::keys {

std::u16string IndexedName(const StepKey& key, int32_t index) {
  switch (key.index) {
    case KeyIndex::Hex8: return std::u16string(key.name) + IntToHex(static_cast<uint32_t>(index), 8);
    case KeyIndex::Decimal: return std::u16string(key.name) + IntToStr(index);
    case KeyIndex::None: break;
  }
  return std::u16string(key.name);
}

}  // namespace qm::keys
