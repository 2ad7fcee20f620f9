#include "table/csv_file_lines.h"

#include <algorithm>
#include <cstring>

#include "core/simd_kernels.h"
#include "platform/large_blocks.h"

namespace qm {

namespace {

// Bytes read and decoded at a time: the table is built while the file
// streams in, so the whole decoded text never sits in memory beside it.
constexpr size_t kReadChunk = size_t{1} << 18;
// Pieces this large hold a very long line, whose bytes are given back while
// it is split.
constexpr size_t kDropLinesAbove = size_t{8} << 20;

}  // namespace

bool FileLines::Next(std::u16string_view& line) {
  for (;;) {
    if (direct_ ? NextRawLine(line) : cursor_.Next(line)) return true;
    if (finished_ || ended_ || cursor_.EndedByNul()) return false;
    LoadPiece();
  }
}

bool FileLines::NextData(const SkipRules& rules, LineSplitter& splitter, size_t minCells, bool& skipped,
                         size_t& count) {
  if (!direct_) {
    // The decoded piece is this source's own scratch: a long line's text is
    // given back while it is split.
    std::u16string_view line;
    if (!Next(line)) return false;
    skipped = rules.Skips(line);
    if (!skipped) count = splitter.Split(line, minCells, line.size() >= kDropLinesAbove / 2);
    return true;
  }
  for (;;) {
    if (pos_ < pieceEnd_) {
      const char* bytes = bytes_.data();
      const char* line = bytes + pos_;
      const char* end = bytes + pieceEnd_;
      // The rules look at the line first: the bytes of a long line are
      // given back while it is split.
      skipped = SkipsBytes(rules, line, end);
      const bool drop = static_cast<size_t>(end - line) >= kDropLinesAbove;
      const Utf8LineSplitter::Cut cut = utf8_.Split(line, end, minCells, drop, splitter);
      count = cut.count;
      const char* stop = cut.stop;
      if (stop < end && *stop == 0) {
        // A character 0 ends the text; a line cut short by it still counts.
        ended_ = true;
        pos_ = pieceEnd_;
        if (stop == line) return false;
      } else {
        pos_ = StepOverBreak(stop, end);
      }
      return true;
    }
    if (finished_ || ended_) return false;
    LoadPiece();
  }
}

size_t FileLines::StepOverBreak(const char* stop, const char* end) const {
  const char* bytes = bytes_.data();
  if (stop >= end) return static_cast<size_t>(end - bytes);
  if (*stop == '\r' && stop + 1 < end && stop[1] == '\n') return static_cast<size_t>(stop + 2 - bytes);
  return static_cast<size_t>(stop + 1 - bytes);
}

bool FileLines::SkipsBytes(const SkipRules& rules, const char* line, const char* end) {
  auto lineEnd = [](char c) { return c == '\n' || c == '\r' || c == 0; };
  if (rules.blank) {
    const char* p = line;
    while (p < end && static_cast<unsigned char>(*p) <= 32 && !lineEnd(*p)) ++p;
    if (p == end || lineEnd(*p)) return true;
  }
  if (rules.comment.empty()) return false;
  size_t take = std::min(static_cast<size_t>(end - line), 4 * rules.comment.size() + 4);
  take = static_cast<size_t>(std::find_if(line, line + take, lineEnd) - line);
  char16_t* text = lineText_.Reserve(take + 1);
  const size_t units = DecodeInto(TextEncoding::UTF8, line, take, text);
  return std::u16string_view(text, units).substr(0, rules.comment.size()) == rules.comment;
}

bool FileLines::NextRawLine(std::u16string_view& line) {
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

size_t FileLines::FindCut(const char* bytes, size_t count) const {
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

size_t FileLines::FindNul(const char* bytes, size_t count) const {
  if (unitBytes_ == 1) {
    const auto* begin = reinterpret_cast<const uint8_t*>(bytes);
    const uint8_t* nul = simd::Active().findByte(begin, begin + count, 0);
    return nul != begin + count ? static_cast<size_t>(nul - begin) + 1 : 0;
  }
  // Pieces start at an even byte and are read in even counts but at the end.
  for (size_t k = 0; k + 1 < count; k += 2) {
    if (bytes[k] == 0 && bytes[k + 1] == 0) return k + 2;
  }
  return 0;
}

size_t FileLines::CountBreaks(const char* bytes, size_t count) const {
  size_t lf = 0;
  if (unitBytes_ == 1) {
    lf = simd::Active().countByte(reinterpret_cast<const uint8_t*>(bytes), count, '\n');
  } else {
    for (size_t k = 0; k + 1 < count; k += 2) lf += bytes[k] == '\n' && bytes[k + 1] == 0;
  }
  return lf;
}

void FileLines::LoadPiece() {
  utf8_.Restart();
  // Drop the piece just used; what was read beyond it moves to the front.
  if (consumed_) {
    held_ -= consumed_;
    if (held_) std::memmove(bytes_.data(), bytes_.data() + consumed_, held_);
    consumed_ = 0;
  }
  size_t want = kReadChunk;
  size_t cut = 0;
  bool end = false;
  bool endedByNul = false;
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
    // No line break yet. A character 0 ends the text, so nothing past it is read.
    if (const size_t nul = FindNul(bytes + held_ - got, got); nul > 0) {
      cut = held_ - got + nul;
      endedByNul = true;
      break;
    }
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
    const double scale =
        cut > start && !endedByNul ? static_cast<double>(reader_.Size()) / static_cast<double>(cut - start) : 1.0;
    hint_ = static_cast<size_t>(static_cast<double>(breaks + 1) * scale * 1.02) + 16;
  }
  if (direct_) {
    pos_ = start;
    pieceEnd_ = cut;
  } else {
    char16_t* text = text_.Reserve(MaxDecodedUnits(encoding_, cut - start));
    const size_t units = DecodeInto(encoding_, bytes + start, cut - start, text);
    cursor_ = TextLineCursor(text, text + units);
    // The piece's bytes are not read again.
    if (cut >= kDropLinesAbove) DiscardPages(bytes, cut);
  }
  consumed_ = cut;
  finished_ = end && held_ == cut;
}

}  // namespace qm
