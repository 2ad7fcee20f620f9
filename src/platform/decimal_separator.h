// The decimal separator of the user's number format, used when a text is
// read as a floating-point number (numeric sorting).
#pragma once

namespace qm {

// The separator between the integer part and the fraction ('.' or ',' ...).
// Read once per process and then cached.
char16_t DecimalSeparator();

}  // namespace qm
