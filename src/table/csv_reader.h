// Reads CSV lines into a table's storage: the lines to skip, the field
// names from the first data line, then one record per data line.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/delimited_text.h"
#include "table/csv_line_source.h"
#include "table/memory_data_storage.h"

namespace qm {

struct CsvReadRules {
  TextFormat format;
  bool headerLine = false;
  int32_t skipFirst = 0;
  bool skipEmpty = false;
  bool skipComments = false;
  std::u16string_view commentChars;
};

// Clears the storage, then reads the lines: skips skipFirst lines, then
// blank and comment lines as set; the first data line gives the fields (and
// is consumed when headerLine is set); each later data line is a record.
// Raises the text-empty error when no data line is left.
void ReadCsv(CsvLineSource& source, const CsvReadRules& rules, TMemoryStrDataStorage& storage);

}  // namespace qm
