// Writes a table's storage as CSV text: the field names first when the
// header line is on, then every record, each joined with the format and
// followed by CR LF. Text that could not be read back as the same table (a
// delimiter that is 0 or a line break between cells, or a cell that needs
// quote characters while there are none or they are line breaks) is never
// written: each writer then raises the format error and writes nothing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/delimited_text.h"
#include "table/memory_data_storage.h"
#include "table/text_encoding.h"

namespace qm {

struct CsvWriteRules {
  TextFormat format;
  bool headerLine = false;
};

// One line a record, without line breaks.
void WriteCsvLines(const TMemoryStrDataStorage& storage, const CsvWriteRules& rules,
                   std::vector<std::u16string>& lines);
// The whole text, every line followed by CR LF.
void WriteCsvText(const TMemoryStrDataStorage& storage, const CsvWriteRules& rules, std::u16string& text);
// Straight to a file in `encoding` (byte-order mark first where the encoding
// has one, CR LF after every line), without building a line list: the same
// bytes as WriteCsvLines followed by WriteLinesToFile. Raises EFileError.
void WriteCsvFile(const TMemoryStrDataStorage& storage, const CsvWriteRules& rules, std::u16string_view fileName,
                  TextEncoding encoding);

// Writes lines to a file in `encoding`: the byte-order mark first where the
// encoding has one (UTF-8 EF BB BF, Unicode FF FE), every line followed by
// CR LF. An existing file is replaced. Raises EFileError.
void WriteLinesToFile(std::u16string_view fileName, const std::vector<std::u16string>& lines, TextEncoding encoding);

}  // namespace qm
