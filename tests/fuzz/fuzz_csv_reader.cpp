// The CSV reader in every encoding and setting. The first bytes choose the
// settings, the rest is the file: it is loaded as decoded text, then from a
// file into the same table (the arena is rewound and refilled), and every cell
// is read back; a table that loaded is written out as text and to a file, and
// the two must agree.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "core/errors.h"
#include "core/utf.h"
#include "fuzz_input.h"
#include "table/csv_format_settings.h"
#include "table/simple_csv_object.h"
#include "table/text_encoding.h"

namespace {

std::u16string& FilePath() {
  static std::u16string path = [] {
    // The test runner points TMPDIR at the test's own folder.
    std::string name = (std::filesystem::temp_directory_path() / "qmcsv-fuzz-csv-XXXXXX").string();
    const int fd = mkstemp(name.data());
    if (fd < 0) std::abort();
    close(fd);
    return qm::Utf8ToUtf16(name);
  }();
  return path;
}

void Check(bool condition, const char* what) {
  if (!condition) {
    std::fprintf(stderr, "fuzz_csv_reader: %s\n", what);
    std::abort();
  }
}

// Reads every cell; the shape must be consistent.
void ReadAll(qm::TSimpleCSVDataClass& table) {
  Check(table.RecordCount() >= 0 && table.FieldCount() >= 0, "negative table size");
  std::u16string cell;
  for (int32_t row = 0; row < table.RecordCount(); ++row) {
    qm::Record* record = table.GetRow(row);
    Check(record != nullptr, "a row inside the table is missing");
    for (int32_t column = 0; column < record->Count(); ++column) (void)record->Cell(column);
    for (int32_t column = 0; column < table.FieldCount(); ++column)
      Check(table.ReadCell(row, column, cell), "a cell inside the table cannot be read");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  qm::fuzz::Input input(data, size);
  const qm::TextEncoding encoding = qm::EncodingFromIndex(input.Byte() % 6);
  const uint8_t delimiterChoice = input.Byte() % 5;
  const char16_t custom = static_cast<char16_t>(input.Byte());
  const char16_t delimiter = qm::DelimiterFromIndex(delimiterChoice, custom);
  const char16_t quote = qm::QuoteFromIndex(input.Byte() % 3);
  const uint8_t flags = input.Byte();
  // A space skips nothing, so text seeds need no 0 byte.
  const auto skipFirst = static_cast<int8_t>(input.Byte() ^ 0x20);
  const char16_t comment = static_cast<char16_t>(input.Byte());

  qm::TSimpleCSVDataClass table;
  table.SetEncoding(encoding);
  table.SetDelimiter(delimiter);
  table.SetQuoteChar(quote);
  table.SetStrictDelimiter(flags & 1);
  table.SetHeaderLine(flags & 2);
  table.SetSkipEmpty(flags & 4);
  table.SetSkipComments(flags & 8);
  table.SetCommentChars(flags & 16 ? std::u16string{comment, u'#'} : std::u16string{comment});
  table.SetSkipFirst(skipFirst);

  const std::string_view file = input.Rest();
  table.LoadFromText(qm::DecodeBytes(file, encoding));
  ReadAll(table);

  FILE* out = std::fopen(qm::Utf16ToUtf8(FilePath()).c_str(), "wb");
  Check(out != nullptr, "cannot write the input file");
  Check(std::fwrite(file.data(), 1, file.size(), out) == file.size(), "cannot write the input file");
  std::fclose(out);
  if (!table.LoadFromCSVFile(FilePath())) return 0;
  ReadAll(table);

  // A character 0, CR or LF as the delimiter cannot round-trip through text.
  if (delimiter == 0 || delimiter == u'\r' || delimiter == u'\n' || delimiter == quote) return 0;
  std::u16string text;
  if (!table.SaveToText(text)) return 0;
  // The file, written record by record (one-byte records straight into its
  // bytes), must hold the whole text encoded at once.
  table.WriteToFile(FilePath(), encoding);
  std::string written;
  FILE* in = std::fopen(qm::Utf16ToUtf8(FilePath()).c_str(), "rb");
  Check(in != nullptr, "cannot read the written file");
  char buffer[4096];
  for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, in)) > 0;) written.append(buffer, n);
  std::fclose(in);
  Check(written == std::string(qm::ByteOrderMark(encoding)) + qm::EncodeText(text, encoding),
        "the written file differs from the text encoded");
  return 0;
}
