// One table with its CSV settings: reads CSV text into the table, writes the
// table back as CSV text, and wraps the table operations so that a failure
// becomes a false (or null) result with its text kept in LastError().
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/delimited_text.h"
#include "table/csv_reader.h"
#include "table/csv_writer.h"
#include "table/memory_data_storage.h"
#include "table/record.h"
#include "table/text_encoding.h"

namespace qm {

class TSimpleCSVDataClass {
 public:
  TSimpleCSVDataClass() = default;
  TSimpleCSVDataClass(const TSimpleCSVDataClass&) = delete;
  TSimpleCSVDataClass& operator=(const TSimpleCSVDataClass&) = delete;

  // ---- settings ----
  char16_t Delimiter() const noexcept { return format_.delimiter; }
  void SetDelimiter(char16_t value) noexcept { format_.delimiter = value; }
  char16_t QuoteChar() const noexcept { return format_.quote; }
  void SetQuoteChar(char16_t value) noexcept { format_.quote = value; }
  bool StrictDelimiter() const noexcept { return format_.strict; }
  void SetStrictDelimiter(bool value) noexcept { format_.strict = value; }
  bool HeaderLine() const noexcept { return headerLine_; }
  void SetHeaderLine(bool value) noexcept { headerLine_ = value; }
  TextEncoding Encoding() const noexcept { return encoding_; }
  void SetEncoding(TextEncoding value) noexcept { encoding_ = value; }
  int32_t SkipFirst() const noexcept { return skipFirst_; }
  void SetSkipFirst(int32_t value) noexcept { skipFirst_ = value; }
  bool SkipEmpty() const noexcept { return skipEmpty_; }
  void SetSkipEmpty(bool value) noexcept { skipEmpty_ = value; }
  bool SkipComments() const noexcept { return skipComments_; }
  void SetSkipComments(bool value) noexcept { skipComments_ = value; }
  const std::u16string& CommentChars() const noexcept { return commentChars_; }
  void SetCommentChars(std::u16string_view value) { commentChars_ = value; }
  // Delimiter, quote character and strict flag as one line format.
  TextFormat Format() const noexcept { return format_; }

  // Text of the last failure; a success leaves it as it was.
  const std::u16string& LastError() const noexcept { return lastError_; }

  // ---- reading ----
  // Clears the table, then reads the lines: skips SkipFirst lines, then blank
  // and comment lines as set; the first data line gives the fields (and is
  // consumed when HeaderLine is set); each later data line is a record.
  bool LoadFromStrings(const std::vector<std::u16string>& lines);
  // The text cut into lines (CR LF, CR or LF; a character 0 ends it).
  bool LoadFromText(std::u16string_view text);
  // The file decoded with Encoding(); its own byte-order mark is skipped. A
  // file that cannot be opened leaves the table as it was.
  bool LoadFromCSVFile(std::u16string_view fileName);

  // ---- writing, with the settings the table has now ----
  bool SaveToStrings(std::vector<std::u16string>& lines);
  // Every line followed by CR LF.
  bool SaveToText(std::u16string& text);
  // Creates the folder chain, then writes the lines with Encoding().
  bool SaveToCSVFile(std::u16string_view fileName);
  // Writes the rendered lines straight to a file in `encoding` (byte-order
  // mark first where the encoding has one, CR LF after every line), without
  // building a line list. Raises EFileError; the result is the same bytes as
  // SaveToStrings followed by WriteLinesToFile.
  void WriteToFile(std::u16string_view fileName, TextEncoding encoding) const;

  // ---- table operations ----
  void ClearData() noexcept { storage_.ClearData(); }
  int32_t FieldCount() const noexcept { return storage_.FieldCount(); }
  int32_t RecordCount() const noexcept { return storage_.RecordCount(); }
  // The stored record itself, or null when the row does not exist.
  Record* GetRow(int32_t row);
  // Appends a copy, padded to FieldCount.
  bool AddRow(const Record& record);
  // Appends every row of the other table, padded to FieldCount, moved
  // rather than copied: the other table is left without rows.
  bool TakeRows(TSimpleCSVDataClass& other);
  bool RemoveRow(int32_t row);
  bool ReadCell(int32_t row, int32_t column, std::u16string& text);
  bool WriteCell(int32_t row, int32_t column, std::u16string_view text);
  bool InsertColumn(int32_t position, ColumnFill fill, std::u16string_view name, std::u16string_view value);
  bool MoveColumn(int32_t from, int32_t to);
  bool RemoveColumn(int32_t column);
  bool SortByField(int32_t column, bool caseSensitive, bool descending, bool numeric);

  TMemoryStrDataStorage& Storage() noexcept { return storage_; }
  const TMemoryStrDataStorage& Storage() const noexcept { return storage_; }

 private:
  CsvReadRules ReadRules() const;
  CsvWriteRules WriteRules() const { return {format_, headerLine_}; }
  template <typename Operation>
  bool Guard(Operation&& operation);

  TMemoryStrDataStorage storage_;
  std::u16string lastError_;
  TextFormat format_{u';', u'"', true};
  bool headerLine_ = false;
  TextEncoding encoding_ = TextEncoding::Default;
  int32_t skipFirst_ = 0;
  bool skipEmpty_ = false;
  bool skipComments_ = false;
  std::u16string commentChars_;
};

}  // namespace qm
