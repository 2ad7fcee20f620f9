#include "table/csv_writer.h"

#include "core/errors.h"
#include "core/messages.h"
#include "platform/file_system.h"
#include "table/fetched_records.h"
#include "table/line_joiner.h"
#include "table/raw_buffer.h"

namespace qm {

namespace {

// UTF-16 units rendered for a text or for lines written as a list, and
// bytes rendered straight in a file's encoding.
constexpr size_t kWriteChunk = size_t{1} << 18;
constexpr size_t kWriteChunkBytes = size_t{1} << 19;

// Encodes rendered UTF-16 text and writes it, byte-order mark first.
class EncodedFileSink {
 public:
  EncodedFileSink(std::u16string_view fileName, TextEncoding encoding) : writer_(fileName), encoding_(encoding) {
    const std::string_view mark = ByteOrderMark(encoding);
    if (!mark.empty()) writer_.Write(mark.data(), mark.size());
  }
  void operator()(std::u16string_view text) {
    char* out = bytes_.Reserve(MaxEncodedBytes(encoding_, text.size()));
    const size_t count = EncodeInto(encoding_, text.data(), text.size(), out);
    writer_.Write(out, count);
  }
  void Close() { writer_.Close(); }

 private:
  FileWriter writer_;
  TextEncoding encoding_;
  RawBuffer<char> bytes_;
};

// Calls `add` with the header record (when on), then with every record.
template <typename Add>
void ForEachLine(const TMemoryStrDataStorage& storage, const CsvWriteRules& rules, Add&& add) {
  if (rules.headerLine) {
    add(storage.FieldNameRecord());
  }
  ForEachFetched(storage.Records(), [&](const Record& record, size_t) { add(record); });
}

template <typename Sink>
void Render(const TMemoryStrDataStorage& storage, const CsvWriteRules& rules, Sink&& sink) {
  // Lines are joined straight into one buffer that is handed on whenever it
  // holds enough; it grows only for a record larger than the chunk.
  RawBuffer<char16_t> buffer;
  size_t size = 0;
  char16_t* data = buffer.Reserve(kWriteChunk);
  ForEachLine(storage, rules, [&](const Record& record) {
    const size_t room = JoinedRecordMaxUnits(record) + 2;
    if (size + room > kWriteChunk) {
      if (size) sink(std::u16string_view(data, size));
      size = 0;
      data = buffer.Reserve(room);
    }
    char16_t* end = WriteJoinedRecord(record, rules.format, data + size);
    end[0] = u'\r';
    end[1] = u'\n';
    size = static_cast<size_t>(end + 2 - data);
  });
  if (size) sink(std::u16string_view(data, size));
}

// Writes the lines to a file, byte-order mark first: each record's line is
// joined straight into the file's bytes, a chunk of them written at a time.
void RenderFile(const TMemoryStrDataStorage& storage, const CsvWriteRules& rules, std::u16string_view fileName,
                TextEncoding encoding) {
  FileWriter writer(fileName);
  const std::string_view mark = ByteOrderMark(encoding);
  if (!mark.empty()) writer.Write(mark.data(), mark.size());
  FileLineJoiner joiner(rules.format, encoding);
  RawBuffer<char> buffer;
  size_t size = 0;
  char* data = buffer.Reserve(kWriteChunkBytes);
  ForEachLine(storage, rules, [&](const Record& record) {
    const size_t room = joiner.MaxBytes(record);
    if (size + room > kWriteChunkBytes) {
      if (size) writer.Write(data, size);
      size = 0;
      data = buffer.Reserve(room);
    }
    size += joiner.Join(record, data + size);
  });
  if (size) writer.Write(data, size);
  writer.Close();
}

bool IsLineEndOrNul(char16_t c) { return c == 0 || c == u'\r' || c == u'\n'; }

// Whether the cell goes out in quote characters: it holds the delimiter, the
// quote character or, not strict, a character with code 1 to 32.
bool NeedsQuotes(CellText cell, const TextFormat& f) {
  for (size_t k = 0; k < cell.size(); ++k) {
    const char16_t c = cell[k];
    if (c == f.delimiter || (c == f.quote && c != 0) || (!f.strict && c >= 1 && c <= 32)) return true;
  }
  return false;
}

// Raises before anything is written when the text could not be read back as
// the same table: a record of two or more cells joined by a delimiter that is
// 0 or a line break (which ends the text or the line), or quote characters
// called for while there is none, or while it is a line break (a cell that
// needs quoting, or a record of one empty cell, which is written as two quote
// characters). With a usable delimiter and quote character nothing is looked at.
void CheckReadsBack(const TMemoryStrDataStorage& storage, const CsvWriteRules& rules) {
  const TextFormat& f = rules.format;
  const bool badDelimiter = IsLineEndOrNul(f.delimiter);
  const bool badQuote = IsLineEndOrNul(f.quote);
  if (!badDelimiter && !badQuote) return;
  ForEachLine(storage, rules, [&](const Record& record) {
    const Record::Cells cells = record.AllCells();
    bool loses = badDelimiter && cells.Count() > 1;
    if (badQuote && f.quote != 0 && cells.Count() == 1 && cells[0].empty()) loses = true;
    for (int32_t k = 0; badQuote && !loses && k < cells.Count(); ++k) loses = NeedsQuotes(cells[k], f);
    if (loses) throw QmError(msg::kFormatLosesData);
  });
}

}  // namespace

void WriteCsvLines(const TMemoryStrDataStorage& storage, const CsvWriteRules& rules,
                   std::vector<std::u16string>& lines) {
  CheckReadsBack(storage, rules);
  lines.clear();
  lines.reserve(static_cast<size_t>(storage.RecordCount()) + 1);
  std::u16string line;
  ForEachLine(storage, rules, [&](const Record& record) {
    line.clear();
    AppendJoinedRecord(record, rules.format, line);
    lines.push_back(line);
  });
}

void WriteCsvText(const TMemoryStrDataStorage& storage, const CsvWriteRules& rules, std::u16string& text) {
  CheckReadsBack(storage, rules);
  Render(storage, rules, [&](std::u16string_view part) { text.append(part); });
}

void WriteCsvFile(const TMemoryStrDataStorage& storage, const CsvWriteRules& rules, std::u16string_view fileName,
                  TextEncoding encoding) {
  CheckReadsBack(storage, rules);  // before the file is made
  RenderFile(storage, rules, fileName, encoding);
}

void WriteLinesToFile(std::u16string_view fileName, const std::vector<std::u16string>& lines, TextEncoding encoding) {
  EncodedFileSink sink(fileName, encoding);
  std::u16string buffer;
  buffer.reserve(kWriteChunk + 4096);
  for (const std::u16string& line : lines) {
    buffer.append(line);
    buffer.append(u"\r\n");
    if (buffer.size() >= kWriteChunk) {
      sink(buffer);
      buffer.clear();
    }
  }
  if (!buffer.empty()) sink(buffer);
  sink.Close();
}

}  // namespace qm
