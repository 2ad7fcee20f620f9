#include "table/line_joiner.h"

#include "core/simd_join.h"
#include "core/simd_kernels.h"
#include "core/simd_scan.h"

namespace qm {

static_assert(kJoinOverrun >= simd::kCopyOverrun);

namespace {

// The first character that matters for quoting: the quote character, the
// delimiter, a character 0 and, when not strict, codes 1 to 32. It looks over
// a whole record's text at a time, where the widest kernels pay. In one-byte
// text a quote or delimiter above 0xFF cannot occur: a byte 0 stands in for
// it, which the search stops at anyway.
inline const uint8_t* FindQuoteTrigger(const uint8_t* text, const uint8_t* end, const TextFormat& f) {
  const simd::Kernels& k = simd::Active();
  const uint8_t quote = simd::ByteOr0(f.quote), delimiter = simd::ByteOr0(f.delimiter);
  return f.strict ? k.findAny3Bytes(text, end, 0, quote, delimiter) : k.findBlankOr2Bytes(text, end, quote, delimiter);
}
inline const char16_t* FindQuoteTrigger(const char16_t* text, const char16_t* end, const TextFormat& f) {
  const simd::Kernels& k = simd::Active();
  return f.strict ? k.findAny3Units(text, end, 0, f.quote, f.delimiter)
                  : k.findBlankOr2Units(text, end, f.quote, f.delimiter);
}

// A cell in quotes, its quote characters doubled.
template <typename Unit, typename Out>
inline Out* CopyQuoted(const Unit* p, const Unit* end, Out quote, Out* out, const Unit* limit) {
  *out++ = quote;
  for (;;) {
    const Unit* q = simd::Find(p, end, quote);
    out = simd::CopyRun(p, q, out, limit);
    if (q == end) break;
    *out++ = quote;
    *out++ = quote;
    p = q + 1;
  }
  *out++ = quote;
  return out;
}

template <typename Unit, typename Out, typename End>
Out* WriteJoinedCells(const End* ends, int32_t count, const Unit* text, const Unit* limit, const TextFormat& f,
                      Out* out) {
  // Kept apart from `f`: stores through `out` could otherwise change them.
  const auto delimiter = static_cast<Out>(f.delimiter);
  const auto quote = static_cast<Out>(f.quote);
  // One look over the record's text, whose cells lie back to back, finds the
  // first character that may call for quotes; usually there is none, and
  // after one the look goes on from the next cell.
  const Unit* trigger = quote == 0 ? limit : FindQuoteTrigger(text, limit, f);
  const Unit* begin = text;
  for (int32_t k = 0; k < count; ++k) {
    const Unit* end = text + ends[k];
    if (trigger >= end) {
      out = simd::CopyRun(begin, end, out, limit);
    } else {
      // A character 0 ends the check: such a cell goes out as it is.
      out = *trigger != 0 ? CopyQuoted(begin, end, quote, out, limit) : simd::CopyRun(begin, end, out, limit);
      trigger = FindQuoteTrigger(end, limit, f);
    }
    // Every cell is followed by the delimiter, the last one's taken back.
    *out++ = delimiter;
    begin = end;
  }
  return out - 1;
}

template <typename Unit, typename Out>
Out* WriteJoinedCells(const Record::Cells& cells, const Unit* text, const TextFormat& f, Out* out) {
  const Unit* limit = text + cells.All().size();
  return cells.WithEnds([&](const auto* ends) { return WriteJoinedCells(ends, cells.Count(), text, limit, f, out); });
}

// A record of one empty cell: two quote characters, or nothing without them.
template <typename Out>
bool WriteLoneEmptyCell(const Record::Cells& cells, const TextFormat& f, Out*& out) {
  if (cells.Count() != 1 || !cells[0].empty()) return false;
  if (f.quote != 0) {
    const auto quote = static_cast<Out>(f.quote);
    *out++ = quote;
    *out++ = quote;
  }
  return true;
}

// The record joined from its one-byte text, as bytes or as UTF-8 (`Out`);
// its delimiter and quote character must be written as one such unit.
template <typename Out>
Out* WriteJoinedNarrow(const Record& record, const TextFormat& f, Out* out) {
  const Record::Cells cells = record.AllCells();
  if (cells.Count() == 0 || WriteLoneEmptyCell(cells, f, out)) return out;
  return WriteJoinedCells(cells, cells.All().Bytes(), f, out);
}

// Whether the record is kept one byte a character and the format's delimiter
// and quote character lie below `below`: 0x100 to join it as bytes, 0x80 to
// join it as UTF-8.
bool CanJoinNarrow(const Record& record, const TextFormat& f, char16_t below) {
  return record.IsNarrow() && f.delimiter < below && f.quote < below;
}

template <typename Unit>
Unit* EndLine(Unit* end) {
  end[0] = '\r';
  end[1] = '\n';
  return end + 2;
}

}  // namespace

size_t JoinedRecordMaxUnits(const Record& record) {
  const Record::Cells cells = record.AllCells();
  if (cells.Count() == 0) return 0;
  return 2 * cells.All().size() + 3 * static_cast<size_t>(cells.Count()) + 2 + kJoinOverrun;
}

char16_t* WriteJoinedRecord(const Record& record, const TextFormat& f, char16_t* out) {
  const Record::Cells cells = record.AllCells();
  if (cells.Count() == 0 || WriteLoneEmptyCell(cells, f, out)) return out;
  const CellText all = cells.All();
  return all.IsNarrow() ? WriteJoinedCells(cells, all.Bytes(), f, out) : WriteJoinedCells(cells, all.Units(), f, out);
}

void AppendJoinedRecord(const Record& record, const TextFormat& format, std::u16string& out) {
  const size_t old = out.size();
  out.resize(old + JoinedRecordMaxUnits(record));
  char16_t* end = WriteJoinedRecord(record, format, out.data() + old);
  out.resize(static_cast<size_t>(end - out.data()));
}

FileLineJoiner::FileLineJoiner(const TextFormat& format, TextEncoding encoding)
    : format_(format),
      encoding_(encoding),
      asciiAsIs_(encoding == TextEncoding::UTF8 || encoding == TextEncoding::ASCII || encoding == TextEncoding::ANSI ||
                 encoding == TextEncoding::Default) {}

size_t FileLineJoiner::MaxBytes(const Record& record) const {
  return MaxEncodedBytes(encoding_, JoinedRecordMaxUnits(record) + 2);
}

size_t FileLineJoiner::Join(const Record& record, char* out) {
  if (asciiAsIs_) {
    if (encoding_ == TextEncoding::UTF8 && CanJoinNarrow(record, format_, 0x80)) {
      auto* bytes = reinterpret_cast<char8_t*>(out);
      return static_cast<size_t>(EndLine(WriteJoinedNarrow(record, format_, bytes)) - bytes);
    }
    if (encoding_ != TextEncoding::UTF8 && CanJoinNarrow(record, format_, 0x100)) {
      auto* bytes = reinterpret_cast<uint8_t*>(out);
      const size_t count = static_cast<size_t>(EndLine(WriteJoinedNarrow(record, format_, bytes)) - bytes);
      const simd::Kernels& k = simd::Active();
      if (k.isAscii(bytes, count)) return count;
      char16_t* units = units_.Reserve(count);
      k.widenLatin1(bytes, count, units);
      return EncodeInto(encoding_, units, count, out);
    }
  }
  char16_t* units = units_.Reserve(JoinedRecordMaxUnits(record) + 2);
  return EncodeInto(encoding_, units, static_cast<size_t>(EndLine(WriteJoinedRecord(record, format_, units)) - units),
                    out);
}

}  // namespace qm
