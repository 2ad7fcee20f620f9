// Native build: numbers are always written with a point.
#include "platform/decimal_separator.h"

namespace qm {

char16_t DecimalSeparator() { return u'.'; }

}  // namespace qm
