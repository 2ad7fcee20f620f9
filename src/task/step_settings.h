// A step's source, format and target keys read into the table's settings,
// with their {variable} references expanded.
#pragma once

#include <cstdint>
#include <string>

#include "table/csv_format_settings.h"
#include "table/csv_source_settings.h"
#include "table/csv_target_settings.h"

namespace qm {

class TQMParamParser;

// `source`, `filename`, `encoding`, `linecount` with its `line...` keys,
// `skipfirst`, `skipempty`, `skipcomments`, `commentchars`, `headerline`.
TCSVSourceSettings ReadSourceSettings(const TQMParamParser& params);
// `delimiter` (default 2, semicolon), `otherchar` (its first character, or 0
// when empty, for delimiter choice 4), `quotechar` (default 0, double quote),
// `strictdelimiter` (default true).
TCSVFormatSettings ReadFormatSettings(const TQMParamParser& params);
// `savetovariable` with `savevariable`, `savetofile` with `targetfilename`,
// `targetencoding`, `notchangeformat` (default true).
TCSVTargetSettings ReadTargetSettings(const TQMParamParser& params);

}  // namespace qm
