#include "table/simple_csv_object.h"

#include "core/errors.h"
#include "core/messages.h"
#include "platform/file_system.h"
#include "table/csv_file_lines.h"
#include "table/csv_reader.h"

namespace qm {

template <typename Operation>
bool TSimpleCSVDataClass::Guard(Operation&& operation) {
  try {
    operation();
    return true;
  } catch (const std::exception& e) {
    lastError_ = ExceptionText(e);
  } catch (...) {
    lastError_ = msg::kUnknownError;
  }
  return false;
}

// ---- reading -------------------------------------------------------------------

CsvReadRules TSimpleCSVDataClass::ReadRules() const {
  CsvReadRules rules;
  rules.format = format_;
  rules.headerLine = headerLine_;
  rules.skipFirst = skipFirst_;
  rules.skipEmpty = skipEmpty_;
  rules.skipComments = skipComments_;
  rules.commentChars = commentChars_;
  return rules;
}

bool TSimpleCSVDataClass::LoadFromStrings(const std::vector<std::u16string>& lines) {
  return Guard([&] {
    ListLines source(lines);
    ReadCsv(source, ReadRules(), storage_);
  });
}

bool TSimpleCSVDataClass::LoadFromText(std::u16string_view text) {
  return Guard([&] {
    TextLines source(text);
    ReadCsv(source, ReadRules(), storage_);
  });
}

bool TSimpleCSVDataClass::LoadFromCSVFile(std::u16string_view fileName) {
  return Guard([&] {
    // Opened before the table is cleared: a missing file keeps the old table.
    FileReader reader(fileName);
    FileLines source(reader, encoding_, format_);
    ReadCsv(source, ReadRules(), storage_);
  });
}

// ---- writing -------------------------------------------------------------------

bool TSimpleCSVDataClass::SaveToStrings(std::vector<std::u16string>& lines) {
  return Guard([&] { WriteCsvLines(storage_, WriteRules(), lines); });
}

bool TSimpleCSVDataClass::SaveToText(std::u16string& text) {
  text.clear();
  return Guard([&] { WriteCsvText(storage_, WriteRules(), text); });
}

void TSimpleCSVDataClass::WriteToFile(std::u16string_view fileName, TextEncoding encoding) const {
  WriteCsvFile(storage_, WriteRules(), fileName, encoding);
}

bool TSimpleCSVDataClass::SaveToCSVFile(std::u16string_view fileName) {
  return Guard([&] {
    const std::u16string folder = RemoveTrailingDelimiter(ExtractFileDir(fileName));
    if (!ForceFolders(folder)) throw QmError(msg::kCanNotCreateFolder);
    WriteToFile(fileName, encoding_);
  });
}

// ---- table operations ----------------------------------------------------------

Record* TSimpleCSVDataClass::GetRow(int32_t row) {
  Record* record = nullptr;
  Guard([&] { record = &storage_.GetDataRecord(row); });
  return record;
}

bool TSimpleCSVDataClass::AddRow(const Record& record) {
  return Guard([&] { storage_.AddRecord(Record(record)); });
}

bool TSimpleCSVDataClass::TakeRows(TSimpleCSVDataClass& other) {
  return Guard([&] { storage_.TakeRecords(other.storage_); });
}

bool TSimpleCSVDataClass::RemoveRow(int32_t row) {
  return Guard([&] { storage_.DeleteRecord(row); });
}

bool TSimpleCSVDataClass::ReadCell(int32_t row, int32_t column, std::u16string& text) {
  text.clear();
  return Guard([&] { text = storage_.GetCellValue(row, column).ToString(); });
}

bool TSimpleCSVDataClass::WriteCell(int32_t row, int32_t column, std::u16string_view text) {
  return Guard([&] { storage_.SetCellValue(row, column, text); });
}

bool TSimpleCSVDataClass::InsertColumn(int32_t position, ColumnFill fill, std::u16string_view name,
                                       std::u16string_view value) {
  return Guard([&] { storage_.InsertColumn(position, fill, name, value); });
}

bool TSimpleCSVDataClass::MoveColumn(int32_t from, int32_t to) {
  return Guard([&] { storage_.MoveColumn(from, to); });
}

bool TSimpleCSVDataClass::RemoveColumn(int32_t column) {
  return Guard([&] { storage_.RemoveColumn(column); });
}

bool TSimpleCSVDataClass::SortByField(int32_t column, bool caseSensitive, bool descending, bool numeric) {
  return Guard([&] { storage_.SortByField(column, caseSensitive, descending, numeric); });
}

}  // namespace qm
