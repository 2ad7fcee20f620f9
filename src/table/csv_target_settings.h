// Where Save Data writes the table: a host variable, a file, or both.
#pragma once

#include <string>

#include "table/text_encoding.h"

namespace qm {

struct TCSVTargetSettings {
  std::u16string VarName;   // empty: not saved to a variable
  std::u16string FileName;  // empty: not saved to a file
  TextEncoding Encoding = TextEncoding::Default;
  bool KeepFormat = true;  // false: the step's own format replaces the table's
};

}  // namespace qm
