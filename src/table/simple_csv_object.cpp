#include "table/simple_csv_object.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "core/convert.h"
#include "core/errors.h"
#include "core/messages.h"
#include "platform/file_system.h"
#include "table/line_scanner.h"
#include "core/text_lines.h"

namespace qm {

namespace {

// Bytes read and decoded at a time: the table is built while the file
// streams in, so the whole decoded text never sits in memory beside it.
constexpr size_t kReadChunk = size_t{1} << 18;
// UTF-16 units rendered before they are encoded and written.
constexpr size_t kWriteChunk = size_t{1} << 18;

[[noreturn]] void RaiseTextEmpty() { throw QmError(msg::kTextEmpty); }

// A growable buffer whose contents need no clearing.
template <typename T>
class RawBuffer {
 public:
  T* Reserve(size_t count) {
    if (count > capacity_) {
      capacity_ = std::max(count, capacity_ + capacity_ / 2);
      data_.reset(new T[capacity_]);
    }
    return data_.get();
  }
  // As Reserve, keeping the first `keep` items.
  T* Grow(size_t count, size_t keep) {
    if (count > capacity_) {
      const size_t capacity = std::max(count, capacity_ + capacity_ / 2);
      std::unique_ptr<T[]> grown(new T[capacity]);
      if (keep) std::memcpy(grown.get(), data_.get(), keep * sizeof(T));
      data_ = std::move(grown);
      capacity_ = capacity;
    }
    return data_.get();
  }
  T* data() const noexcept { return data_.get(); }

 private:
  std::unique_ptr<T[]> data_;
  size_t capacity_ = 0;
};

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

// The reader's skip rules for blank and comment lines.
struct SkipRules {
  bool blank = false;
  std::u16string_view comment;  // empty: comments are not skipped

  bool Skips(std::u16string_view line) const {
    if (blank && Trim(line).empty()) return true;
    return !comment.empty() && line.substr(0, comment.size()) == comment;
  }
};

// Splits lines into a scratch that is reused for every line.
class LineSplitter {
 public:
  explicit LineSplitter(const TextFormat& format) : format_(format) {}

  // Splits the line; its cells are then Cell(0) to Cell(count - 1).
  size_t Split(std::u16string_view line, size_t minimumCells) {
    char16_t* text = text_.Reserve(line.size() + 1);
    uint32_t* ends = ends_.Reserve(std::max(line.size() + 1, minimumCells));
    return SplitLineInto(line, format_, text, ends);
  }
  // A record of the last split in `arena`, padded with empty cells to `fieldCount`.
  Record MakeRecord(size_t count, size_t fieldCount, RecordArena& arena) {
    uint32_t* ends = ends_.data();
    const uint32_t length = count ? ends[count - 1] : 0;
    for (; count < fieldCount; ++count) ends[count] = length;
    return Record::InArena(arena, std::u16string_view(text_.data(), length), std::span<const uint32_t>(ends, count));
  }
  // Room for a split done elsewhere.
  char16_t* TextRoom(size_t units) { return text_.Reserve(units); }
  uint32_t* EndsRoom(size_t count) { return ends_.Reserve(count); }
  const TextFormat& Format() const noexcept { return format_; }
  std::u16string_view Cell(size_t k) const {
    const uint32_t* ends = ends_.data();
    const uint32_t begin = k ? ends[k - 1] : 0;
    return {text_.data() + begin, ends[k] - begin};
  }

 private:
  TextFormat format_;
  RawBuffer<char16_t> text_;
  RawBuffer<uint32_t> ends_;
};

}  // namespace

// Hands the reader one line at a time.
class CsvLineSource {
 public:
  virtual ~CsvLineSource() = default;
  // The next raw line; false at the end of the text. The view stays valid
  // until the next call.
  virtual bool Next(std::u16string_view& line) = 0;
  // The next line: `skipped` when the rules drop it, else split into
  // `splitter` with `count` cells. False at the end of the text.
  virtual bool NextData(const SkipRules& rules, LineSplitter& splitter, size_t minCells, bool& skipped,
                        size_t& count) {
    std::u16string_view line;
    if (!Next(line)) return false;
    skipped = rules.Skips(line);
    if (!skipped) count = splitter.Split(line, minCells);
    return true;
  }
  // About how many lines there are, for pre-sizing the record list.
  virtual size_t LineCountHint() const = 0;
};

namespace {

class ListLines final : public CsvLineSource {
 public:
  explicit ListLines(const std::vector<std::u16string>& lines) : lines_(lines) {}
  bool Next(std::u16string_view& line) override {
    if (next_ >= lines_.size()) return false;
    line = lines_[next_++];
    return true;
  }
  size_t LineCountHint() const override { return lines_.size(); }

 private:
  const std::vector<std::u16string>& lines_;
  size_t next_ = 0;
};

class TextLines final : public CsvLineSource {
 public:
  explicit TextLines(std::u16string_view text)
      : cursor_(text), hint_(static_cast<size_t>(std::count(text.begin(), text.end(), u'\n')) + 1) {}
  bool Next(std::u16string_view& line) override { return cursor_.Next(line); }
  size_t LineCountHint() const override { return hint_; }

 private:
  TextLineCursor cursor_;
  size_t hint_;
};

// Reads a file piece by piece and cuts each piece into lines. Pieces end
// right after a line break, so no line and no CR LF pair spans two pieces
// and each piece decodes on its own: in every supported encoding a line
// break is one unit that never occurs inside a multi-byte character or a
// UTF-7 shifted run. UTF-8 in a strict format is split straight from the
// bytes; everything else is decoded a piece at a time first.
class FileLines final : public CsvLineSource {
 public:
  FileLines(FileReader& reader, TextEncoding encoding, const TextFormat& format)
      : reader_(reader),
        encoding_(encoding),
        unitBytes_(encoding == TextEncoding::Unicode ? 2 : 1),
        direct_(encoding == TextEncoding::UTF8 && CanSplitUtf8(format)) {}

  bool Next(std::u16string_view& line) override {
    for (;;) {
      if (direct_ ? NextRawLine(line) : cursor_.Next(line)) return true;
      if (finished_ || ended_ || cursor_.EndedByNul()) return false;
      LoadPiece();
    }
  }

  bool NextData(const SkipRules& rules, LineSplitter& splitter, size_t minCells, bool& skipped,
                size_t& count) override {
    if (!direct_) return CsvLineSource::NextData(rules, splitter, minCells, skipped, count);
    for (;;) {
      if (pos_ < pieceEnd_) {
        const char* bytes = bytes_.data();
        const char* line = bytes + pos_;
        const char* end = bytes + pieceEnd_;
        const size_t room = static_cast<size_t>(end - line);
        const char* stop = nullptr;
        count = SplitUtf8Line(line, end, splitter.Format(), splitter.TextRoom(room + 16),
                              splitter.EndsRoom(std::max(room + 2, minCells)), stop, look_);
        if (stop < end && *stop == 0) {
          // A character 0 ends the text; a line cut short by it still counts.
          ended_ = true;
          pos_ = pieceEnd_;
          if (stop == line) return false;
        } else {
          pos_ = StepOverBreak(stop, end);
        }
        skipped = SkipsBytes(rules, line, stop);
        return true;
      }
      if (finished_ || ended_) return false;
      LoadPiece();
    }
  }

  size_t LineCountHint() const override { return hint_; }

 private:
  size_t StepOverBreak(const char* stop, const char* end) const {
    const char* bytes = bytes_.data();
    if (stop >= end) return static_cast<size_t>(end - bytes);
    if (*stop == '\r' && stop + 1 < end && stop[1] == '\n') return static_cast<size_t>(stop + 2 - bytes);
    return static_cast<size_t>(stop + 1 - bytes);
  }

  // The skip rules on a line still in UTF-8: a blank line has bytes of 0 to
  // 32 only; the comment prefix is compared with the line's decoded start.
  bool SkipsBytes(const SkipRules& rules, const char* line, const char* stop) {
    if (rules.blank) {
      const char* p = line;
      while (p < stop && static_cast<unsigned char>(*p) <= 32) ++p;
      if (p == stop) return true;
    }
    if (rules.comment.empty()) return false;
    const size_t take = std::min(static_cast<size_t>(stop - line), 4 * rules.comment.size() + 4);
    char16_t* text = lineText_.Reserve(take + 1);
    const size_t units = DecodeInto(TextEncoding::UTF8, line, take, text);
    return std::u16string_view(text, units).substr(0, rules.comment.size()) == rules.comment;
  }

  // The next line decoded on its own (UTF-8 read straight from the bytes).
  bool NextRawLine(std::u16string_view& line) {
    if (pos_ >= pieceEnd_) return false;
    const char* bytes = bytes_.data();
    const char* start = bytes + pos_;
    const char* end = bytes + pieceEnd_;
    const char* stop = start;
    while (stop < end && *stop != '\n' && *stop != '\r' && *stop != 0) ++stop;
    char16_t* text = lineText_.Reserve(static_cast<size_t>(stop - start) + 1);
    line = std::u16string_view(text, DecodeInto(TextEncoding::UTF8, start, static_cast<size_t>(stop - start), text));
    if (stop < end && *stop == 0) {
      ended_ = true;
      pos_ = pieceEnd_;
      return stop != start;
    }
    pos_ = StepOverBreak(stop, end);
    return true;
  }

  // One past the last line break that is safe to cut after, or 0.
  size_t FindCut(const char* bytes, size_t count) const {
    if (unitBytes_ == 1) {
      for (size_t k = count; k-- > 0;) {
        if (bytes[k] == '\n') return k + 1;
        if (bytes[k] == '\r' && k + 1 < count) return k + 1;
      }
      return 0;
    }
    const auto* b = reinterpret_cast<const unsigned char*>(bytes);
    for (size_t k = count / 2; k-- > 0;) {
      if (b[2 * k + 1] != 0) continue;
      if (b[2 * k] == '\n') return 2 * k + 2;
      if (b[2 * k] == '\r' && k + 1 < count / 2) return 2 * k + 2;
    }
    return 0;
  }

  size_t CountBreaks(const char* bytes, size_t count) const {
    size_t lf = 0;
    if (unitBytes_ == 1) {
      lf = static_cast<size_t>(std::count(bytes, bytes + count, '\n'));
    } else {
      for (size_t k = 0; k + 1 < count; k += 2) lf += bytes[k] == '\n' && bytes[k + 1] == 0;
    }
    return lf;
  }

  void LoadPiece() {
    look_ = Utf8LookAhead();
    // Drop the piece just used; what was read beyond it moves to the front.
    if (consumed_) {
      held_ -= consumed_;
      if (held_) std::memmove(bytes_.data(), bytes_.data() + consumed_, held_);
      consumed_ = 0;
    }
    size_t want = kReadChunk;
    size_t cut = 0;
    bool end = false;
    for (;;) {
      char* bytes = bytes_.Grow(held_ + want, held_);
      const size_t got = reader_.Read(bytes + held_, want);
      held_ += got;
      end = got < want;
      if (end) {
        cut = held_;
        break;
      }
      cut = FindCut(bytes, held_);
      if (cut > 0) break;
      want = held_;  // a very long line: read on, doubling
    }
    char* bytes = bytes_.data();
    size_t start = 0;
    if (first_) {
      first_ = false;
      const std::string_view mark = ByteOrderMark(encoding_);
      if (!mark.empty() && cut >= mark.size() && std::memcmp(bytes, mark.data(), mark.size()) == 0) {
        start = mark.size();
      }
      const size_t breaks = CountBreaks(bytes + start, cut - start);
      const double scale = cut > start ? static_cast<double>(reader_.Size()) / static_cast<double>(cut - start) : 1.0;
      hint_ = static_cast<size_t>(static_cast<double>(breaks + 1) * scale * 1.02) + 16;
    }
    if (direct_) {
      pos_ = start;
      pieceEnd_ = cut;
    } else {
      char16_t* text = text_.Reserve(MaxDecodedUnits(encoding_, cut - start));
      const size_t units = DecodeInto(encoding_, bytes + start, cut - start, text);
      cursor_ = TextLineCursor(text, text + units);
    }
    consumed_ = cut;
    finished_ = end && held_ == cut;
  }

  FileReader& reader_;
  TextEncoding encoding_;
  size_t unitBytes_;
  bool direct_;
  RawBuffer<char> bytes_;
  size_t held_ = 0;      // bytes read, from the buffer's start
  size_t consumed_ = 0;  // bytes of the current piece, dropped at the next load
  size_t pos_ = 0;       // direct reading: the next line's first byte
  size_t pieceEnd_ = 0;
  Utf8LookAhead look_;            // direct reading: kept from line to line of a piece
  RawBuffer<char16_t> text_;      // decoded piece
  RawBuffer<char16_t> lineText_;  // one decoded line
  TextLineCursor cursor_;
  bool first_ = true;
  bool finished_ = false;
  bool ended_ = false;  // a character 0 ended the text
  size_t hint_ = 0;
};

}  // namespace

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

void TSimpleCSVDataClass::ReadLines(CsvLineSource& source) {
  // The old records' memory holds the new ones; whatever the load leaves
  // unused, also after a failure, goes back when it ends.
  storage_.ClearForReload();
  struct ReleaseUnused {
    TMemoryStrDataStorage& storage;
    ~ReleaseUnused() { storage.ReleaseUnusedMemory(); }
  } releaseUnused{storage_};
  std::u16string_view line;
  if (!source.Next(line)) RaiseTextEmpty();
  // A negative count points before the first line: the line list's own
  // index error, as for any other bad index.
  if (skipFirst_ < 0) RaiseListIndexError(skipFirst_);
  for (int32_t k = 0; k < skipFirst_; ++k) {
    if (!source.Next(line)) RaiseTextEmpty();
  }
  SkipRules rules;
  rules.blank = skipEmpty_;
  if (skipComments_) rules.comment = commentChars_;
  while (rules.Skips(line)) {
    if (!source.Next(line)) RaiseTextEmpty();
  }

  LineSplitter splitter(format_);
  const size_t fieldCount = splitter.Split(line, 0);
  for (size_t k = 0; k < fieldCount; ++k) {
    if (headerLine_) {
      storage_.AppendFieldName(splitter.Cell(k));
    } else {
      storage_.AppendFieldName(u"field" + IntToStr(static_cast<int64_t>(k)));
    }
  }
  const size_t hint = source.LineCountHint();
  storage_.SetCapacity(static_cast<int32_t>(std::min<size_t>(hint, 0x7FFFFFFF)));
  // Without a header the first data line is also the first record.
  if (!headerLine_) storage_.AppendRecord(splitter.MakeRecord(fieldCount, fieldCount, storage_.Arena()));
  bool skipped = false;
  size_t count = 0;
  while (source.NextData(rules, splitter, fieldCount, skipped, count)) {
    if (!skipped) storage_.AppendRecord(splitter.MakeRecord(count, fieldCount, storage_.Arena()));
  }
}

bool TSimpleCSVDataClass::LoadFromStrings(const std::vector<std::u16string>& lines) {
  return Guard([&] {
    ListLines source(lines);
    ReadLines(source);
  });
}

bool TSimpleCSVDataClass::LoadFromText(std::u16string_view text) {
  return Guard([&] {
    TextLines source(text);
    ReadLines(source);
  });
}

bool TSimpleCSVDataClass::LoadFromCSVFile(std::u16string_view fileName) {
  return Guard([&] {
    // Opened before the table is cleared: a missing file keeps the old table.
    FileReader reader(fileName);
    FileLines source(reader, encoding_, format_);
    ReadLines(source);
  });
}

// ---- writing -------------------------------------------------------------------

template <typename Sink>
void TSimpleCSVDataClass::Render(Sink&& sink) const {
  // Lines are joined straight into one buffer that is handed on whenever it
  // holds enough; it grows only for a record larger than the chunk.
  RawBuffer<char16_t> buffer;
  size_t size = 0;
  char16_t* data = buffer.Reserve(kWriteChunk);
  auto add = [&](const Record& record) {
    const size_t room = JoinedRecordMaxUnits(record) + 2;
    if (size + room > kWriteChunk) {
      if (size) sink(std::u16string_view(data, size));
      size = 0;
      data = buffer.Reserve(room);
    }
    char16_t* end = WriteJoinedRecord(record, format_, data + size);
    end[0] = u'\r';
    end[1] = u'\n';
    size = static_cast<size_t>(end + 2 - data);
  };
  if (headerLine_) {
    std::vector<std::u16string_view> names(storage_.FieldNames().begin(), storage_.FieldNames().end());
    add(Record(names));
  }
  for (const Record& record : storage_.Records()) add(record);
  if (size) sink(std::u16string_view(data, size));
}

bool TSimpleCSVDataClass::SaveToStrings(std::vector<std::u16string>& lines) {
  return Guard([&] {
    lines.clear();
    lines.reserve(static_cast<size_t>(RecordCount()) + 1);
    std::u16string line;
    auto add = [&](const Record& record) {
      line.clear();
      AppendJoinedRecord(record, format_, line);
      lines.push_back(line);
    };
    if (headerLine_) {
      std::vector<std::u16string_view> names(storage_.FieldNames().begin(), storage_.FieldNames().end());
      add(Record(names));
    }
    for (const Record& record : storage_.Records()) add(record);
  });
}

bool TSimpleCSVDataClass::SaveToText(std::u16string& text) {
  text.clear();
  return Guard([&] { Render([&](std::u16string_view part) { text.append(part); }); });
}

void TSimpleCSVDataClass::WriteToFile(std::u16string_view fileName, TextEncoding encoding) const {
  EncodedFileSink sink(fileName, encoding);
  Render(sink);
  sink.Close();
}

bool TSimpleCSVDataClass::SaveToCSVFile(std::u16string_view fileName) {
  return Guard([&] {
    const std::u16string folder = RemoveTrailingDelimiter(ExtractFileDir(fileName));
    if (!ForceFolders(folder)) throw QmError(msg::kCanNotCreateFolder);
    WriteToFile(fileName, encoding_);
  });
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

// ---- table operations ----------------------------------------------------------

Record* TSimpleCSVDataClass::GetRow(int32_t row) {
  Record* record = nullptr;
  Guard([&] { record = &storage_.GetDataRecord(row); });
  return record;
}

bool TSimpleCSVDataClass::AddRow(const Record& record) {
  return Guard([&] { storage_.AddRecord(Record(record)); });
}

bool TSimpleCSVDataClass::RemoveRow(int32_t row) {
  return Guard([&] { storage_.DeleteRecord(row); });
}

bool TSimpleCSVDataClass::ReadCell(int32_t row, int32_t column, std::u16string& text) {
  text.clear();
  return Guard([&] { text = storage_.GetCellValue(row, column); });
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
