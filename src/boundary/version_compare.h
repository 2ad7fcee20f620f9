// Comparison of dotted version texts such as "9.5" and "9.5.0.1".
#pragma once

#include <string_view>

namespace qm {

// -1, 0 or 1. Each text is read as four numbers (major, minor, release,
// build): a leading run of digits, then one separator character; missing or
// empty parts are 0, so "9.5" equals "9.5.0.0" and "v9.5" reads as 0.
int CompareVersions(std::u16string_view a, std::u16string_view b);

}  // namespace qm
