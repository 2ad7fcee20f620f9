#include "table/utf8_line_splitter.h"

#include <algorithm>

#include "core/utf.h"
#include "table/spent_pages.h"

namespace qm {

namespace {

inline bool IsByteLineEnd(uint8_t c) { return c == '\n' || c == '\r' || c == 0; }

// The split writes UTF-16 units or, for a line whose characters all lie
// below U+0100, one byte a character. A one-byte split gives up on meeting
// any other character: kNoFit, and then returns kNotOneByte, its output
// undefined.
template <typename Unit>
constexpr bool kOneByte = sizeof(Unit) == 1;
constexpr size_t kNoFit = 0;
constexpr size_t kNotOneByte = ~size_t{0};

// The common two- and three-byte forms inline; everything else, malformed
// bytes included, through the full decoder. Every unit written is or'ed into
// `seen`, so the split knows whether its text fits one byte a character.
template <typename Unit>
inline size_t DecodeUtf8At(const uint8_t* s, const uint8_t* end, Unit*& o, char16_t& seen) {
  if (s[0] >= 0xC2 && s[0] <= 0xDF && end - s >= 2 && (s[1] & 0xC0) == 0x80) {
    const auto c = static_cast<char16_t>(((s[0] & 0x1Fu) << 6) | (s[1] & 0x3Fu));
    if (kOneByte<Unit> && c > 0xFF) return kNoFit;
    *o++ = static_cast<Unit>(c);
    seen |= c;
    return 2;
  }
  // Every other character lies above U+00FF (a malformed one is U+FFFD).
  if constexpr (kOneByte<Unit>) {
    return kNoFit;
  } else {
    seen |= 0x100;
    if ((s[0] & 0xF0) == 0xE0 && s[0] != 0xE0 && s[0] != 0xED && end - s >= 3 && (s[1] & 0xC0) == 0x80 &&
        (s[2] & 0xC0) == 0x80) {
      *o++ = static_cast<char16_t>(((s[0] & 0x0Fu) << 12) | ((s[1] & 0x3Fu) << 6) | (s[2] & 0x3Fu));
      return 3;
    }
    return DecodeUtf8Sequence(reinterpret_cast<const char*>(s), static_cast<size_t>(end - s), o);
  }
}

// Where a split is: the next byte to read, and the next unit and cell end
// to write.
template <typename Unit>
struct Cursor {
  const uint8_t* s;
  const uint8_t* const end;
  Unit* o;
  Unit* const text;
  uint32_t* e;
  char16_t seen = 0;  // every unit written, or'ed

  void EndCell() { *e++ = static_cast<uint32_t>(o - text); }
};

// One cell from the cursor: its text goes to `o` and its end to `e`. A
// delimiter after it is stepped over, and leaves an empty cell behind when
// the line ends right after it. A `continued` cell began before `s`, so a
// quote character at `s` is part of its text. False when a one-byte split
// meets a character that does not fit.
template <typename Unit>
inline bool SplitCell(Cursor<Unit>& c, uint8_t delimiter, uint8_t quote, bool continued) {
  if (!continued && quote != 0 && *c.s == quote) {
    ++c.s;
    for (;;) {
      simd::CopyAsciiUntil(c.s, c.end, c.o, quote);
      if (c.s >= c.end || IsByteLineEnd(*c.s)) break;  // never closed: the rest of the line
      if (*c.s == quote) {
        if (c.s + 1 < c.end && c.s[1] == quote) {
          *c.o++ = quote;
          c.s += 2;
          continue;
        }
        ++c.s;  // the closing quote
        break;
      }
      const size_t n = DecodeUtf8At(c.s, c.end, c.o, c.seen);
      if (kOneByte<Unit> && n == kNoFit) return false;
      c.s += n;
    }
  } else {
    for (;;) {
      simd::CopyAsciiUntil(c.s, c.end, c.o, delimiter);
      if (c.s >= c.end || *c.s < 0x80) break;  // the delimiter, a line break or the end
      const size_t n = DecodeUtf8At(c.s, c.end, c.o, c.seen);
      if (kOneByte<Unit> && n == kNoFit) return false;
      c.s += n;
    }
  }
  c.EndCell();
  if (c.s < c.end && *c.s == delimiter) {
    ++c.s;
    if (c.s == c.end || IsByteLineEnd(*c.s)) c.EndCell();
  }
  return true;
}

}  // namespace

bool Utf8LineSplitter::Handles(const TextFormat& f) {
  auto safe = [](char16_t c) { return c < 0x80 && c != 0 && c != u'\r' && c != u'\n'; };
  return f.strict && safe(f.delimiter) && (f.quote == 0 || safe(f.quote));
}

Utf8LineSplitter::Utf8LineSplitter(const TextFormat& format)
    : masker_(static_cast<uint8_t>(format.delimiter), static_cast<uint8_t>(format.quote)),
      delimiter_(static_cast<uint8_t>(format.delimiter)),
      quote_(static_cast<uint8_t>(format.quote)) {}

Utf8LineSplitter::Cut Utf8LineSplitter::Split(const char* line, const char* end, size_t minCells, bool dropRead,
                                              LineSplitter& cells) {
  // Most lines are split one byte a character. A line with another
  // character is split again in UTF-16, and so is a very long line, whose
  // bytes are given back on the way. After two such lines in a row, as in a
  // text of Greek, Cyrillic or Chinese, lines go to UTF-16 first until one
  // turns out to fit one byte a character.
  const size_t room = static_cast<size_t>(end - line);
  uint32_t* ends = cells.EndsRoom(std::max(room + 2, minCells));
  if (!dropRead && wideRun_ < 2) {
    const size_t count = SplitInto(line, end, cells.ByteRoom(room + 16), ends, false);
    if (count != kNotOneByte) {
      cells.SetInBytes();
      wideRun_ = 0;
      return {count, stop_};
    }
  }
  const size_t count = SplitInto(line, end, cells.TextRoom(room + 16), ends, dropRead);
  cells.SetOneByte(oneByte_);
  wideRun_ = oneByte_ ? 0 : wideRun_ + 1;
  return {count, stop_};
}

template <typename Unit>
size_t Utf8LineSplitter::SplitInto(const char* bytes, const char* endBytes, Unit* text, uint32_t* ends, bool dropRead) {
  const auto* line = reinterpret_cast<const uint8_t*>(bytes);
  Cursor<Unit> c{line, reinterpret_cast<const uint8_t*>(endBytes), text, text, ends};
  const uint8_t delimiter = delimiter_;
  const uint8_t quote = quote_;
  bool continued = false;  // the cell at hand began before `c.s`
  SpentPages drop(bytes, dropRead);
  for (;;) {
    // The line is looked at 64 bytes at a time; the masks show where cells
    // end, so cells are cut without going byte by byte. Only a quoted cell
    // goes through SplitCell, and so does the end of the text, as a look
    // reads up to 80 bytes ahead. A line mostly starts within the last look
    // of the line before, which then serves again.
    const auto* lookBase = reinterpret_cast<const uint8_t*>(look_.base);
    bool quoted = false;
    // A delimiter that is also the quote character is left to SplitCell.
    while (delimiter != quote) {
      unsigned from = 0;  // the first byte not yet taken
      if (lookBase != nullptr && c.s >= lookBase && c.s - lookBase < 64 && !continued) {
        from = static_cast<unsigned>(c.s - lookBase);
        c.s = lookBase;
      } else if (c.end - c.s >= 80) {
        masker_.Mask(c.s, look_.masks);
        look_.base = reinterpret_cast<const char*>(c.s);
      } else {
        break;
      }
      lookBase = nullptr;
      const uint8_t* s = c.s;
      int cellStart = continued ? -1 : static_cast<int>(from);
      uint64_t delimiters = look_.masks.delimiters & (~uint64_t{0} << from);
      uint64_t others = look_.masks.others & (~uint64_t{0} << from);  // what lies ahead that is no delimiter
      for (;;) {
        // The delimiters before the next other byte each end a cell.
        const uint64_t before = others ? (others & (~others + 1)) - 1 : ~uint64_t{0};
        if (const uint64_t run = delimiters & before; run != 0) {
          auto units = static_cast<uint32_t>(c.o - text);
          for (uint64_t d = run; d != 0; d &= d - 1) {
            const auto q = static_cast<unsigned>(__builtin_ctzll(d));
            simd::CopyAscii(s + from, q - from, text + units);
            units += q - from;
            *c.e++ = units;
            from = q + 1;
          }
          c.o = text + units;
          cellStart = static_cast<int>(from);
          delimiters &= ~before;
        }
        if (others == 0) break;
        const auto q = static_cast<unsigned>(__builtin_ctzll(others));
        others &= others - 1;
        const uint8_t b = s[q];
        if (IsByteLineEnd(b)) {
          // Also right after a delimiter: the empty cell that ends the line.
          simd::CopyAscii(s + from, q - from, c.o);
          c.o += q - from;
          if (s + q != line) c.EndCell();  // else the line is empty
          stop_ = reinterpret_cast<const char*>(s + q);
          oneByte_ = c.seen < 0x100;
          return static_cast<size_t>(c.e - ends);
        }
        if (b >= 0x80) {
          simd::CopyAscii(s + from, q - from, c.o);
          c.o += q - from;
          const size_t n = DecodeUtf8At(s + q, c.end, c.o, c.seen);
          if (kOneByte<Unit> && n == kNoFit) return kNotOneByte;
          from = q + static_cast<unsigned>(n);
          if (from >= 64) break;
          others &= ~uint64_t{0} << from;
          delimiters &= ~uint64_t{0} << from;
        } else if (b == quote && static_cast<int>(q) == cellStart) {
          quoted = true;  // a quoted cell, from `from`
          break;
        }
        // Else a control character, or a quote inside a cell: text like any
        // other (a delimiter among them is still ahead in `delimiters`).
      }
      if (quoted) {
        c.s += from;
        continued = false;
        break;
      }
      // What is left of the piece belongs to the cell at hand.
      if (from < 64) {
        simd::CopyAscii(s + from, 64 - from, c.o);
        c.o += 64 - from;
        from = 64;
      }
      continued = cellStart != static_cast<int>(from);
      c.s += from;
      drop.Behind(c.s);
    }
    if (!continued && (c.s >= c.end || IsByteLineEnd(*c.s))) {
      // The line is empty, or a delimiter ended it: then an empty cell.
      if (c.s != line) c.EndCell();
      break;
    }
    if (!SplitCell(c, delimiter, quote, continued)) return kNotOneByte;
    drop.Behind(c.s);
    continued = false;
    if (c.s >= c.end || IsByteLineEnd(*c.s)) break;
  }
  stop_ = reinterpret_cast<const char*>(c.s);
  oneByte_ = c.seen < 0x100;
  return static_cast<size_t>(c.e - ends);
}

}  // namespace qm
