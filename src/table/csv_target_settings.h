// Where Save Data writes the table: a host variable, a file, or both.
#pragma once

#include <cstdint>
#include <string>

#include "table/text_encoding.h"

namespace qm {

class TQMParamParser;

struct TCSVTargetSettings {
  std::u16string VarName;   // empty unless `savetovariable`; expanded
  std::u16string FileName;  // empty unless `savetofile`; expanded
  TextEncoding Encoding = TextEncoding::Default;
  int32_t KeepFormat = -1;  // `notchangeformat`, 32-bit boolean, default true
};

TCSVTargetSettings ReadTargetSettings(const TQMParamParser& params);

}  // namespace qm
