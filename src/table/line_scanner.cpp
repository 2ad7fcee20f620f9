#include "table/line_scanner.h"

#include <algorithm>
#include <cstring>

#include "core/copy_bytes.h"
#include "core/simd_kernels.h"
#include "core/simd_scan.h"
#include "core/utf.h"
#include "platform/large_blocks.h"

namespace qm {

namespace {

constexpr bool IsBlank(char16_t c) { return c >= 1 && c <= 32; }

// Gives back the pages of a long line's text that lie well behind the split's
// position: a look goes back up to 63 bytes, never further.
struct ReadBytesDrop {
  static constexpr ptrdiff_t kStep = ptrdiff_t{1} << 20;
  static constexpr ptrdiff_t kBehind = 256;
  const char* kept;  // nothing before it is read again
  bool on;
  void Behind(const void* position) noexcept {
    const auto* s = static_cast<const char*>(position);
    if (on && s - kept >= kStep + kBehind) {
      DiscardPages(const_cast<char*>(kept), static_cast<size_t>(s - kBehind - kept));
      kept = s - kBehind;
    }
  }
};

// The first character that matters for quoting: the quote character, the
// delimiter, a character 0 and, when not strict, codes 1 to 32. It looks over
// a whole record's text at a time, where the widest kernels pay. In one-byte
// text a quote or delimiter above 0xFF cannot occur: a byte 0 stands in for
// it, which the search stops at anyway.
inline const uint8_t* FindQuoteTrigger(const uint8_t* text, const uint8_t* end, const TextFormat& f) {
  const simd::Kernels& k = simd::Active();
  const uint8_t quote = simd::ByteOr0(f.quote), delimiter = simd::ByteOr0(f.delimiter);
  return f.strict ? k.findAny3Bytes(text, end, 0, quote, delimiter)
                  : k.findBlankOr2Bytes(text, end, quote, delimiter);
}
inline const char16_t* FindQuoteTrigger(const char16_t* text, const char16_t* end, const TextFormat& f) {
  const simd::Kernels& k = simd::Active();
  return f.strict ? k.findAny3Units(text, end, 0, f.quote, f.delimiter)
                  : k.findBlankOr2Units(text, end, f.quote, f.delimiter);
}

}  // namespace

size_t SplitLineInto(std::u16string_view line, const TextFormat& f, char16_t* text, uint32_t* ends, bool dropRead) {
  const char16_t* s = line.data();
  const size_t n = line.size();
  const char16_t quote = f.quote;
  const char16_t delimiter = f.delimiter;
  const bool strict = f.strict;
  char16_t* o = text;
  uint32_t* e = ends;
  size_t p = 0;
  ReadBytesDrop drop{reinterpret_cast<const char*>(s), dropRead};
  // A cell's text is copied a megabyte of units at a time when the line's
  // text is given back on the way.
  const size_t piece = dropRead ? size_t{1} << 19 : n;
  if (!strict) {
    while (p < n && IsBlank(s[p])) ++p;
  }
  while (p < n) {
    if (quote != 0 && s[p] == quote) {
      ++p;
      while (p < n) {
        // Copies ahead eight units at a time up to the next quote; output
        // never runs ahead of input, so the stores stay within the line's room.
        const size_t run = simd::CopyUntil(s + p, n - p, o, quote);
        p += run;
        o += run;
        if (p >= n) break;
        const char16_t c = s[p];
        if (c == quote) {
          if (p + 1 < n && s[p + 1] == quote) {
            *o++ = quote;
            p += 2;
            continue;
          }
          ++p;  // the closing quote
          break;
        }
        *o++ = c;
        ++p;
      }
    } else if (strict) {
      for (;;) {
        const size_t take = std::min(piece, n - p);
        const size_t run = simd::CopyUntil(s + p, take, o, delimiter);
        p += run;
        o += run;
        if (run < take || p == n) break;
        drop.Behind(s + p);
      }
    } else {
      const size_t begin = p;
      while (p < n && s[p] != delimiter && !IsBlank(s[p])) ++p;
      CopyBytes(o, s + begin, (p - begin) * sizeof(char16_t));
      o += p - begin;
    }
    *e++ = static_cast<uint32_t>(o - text);
    drop.Behind(s + p);
    if (!strict) {
      while (p < n && IsBlank(s[p])) ++p;
    }
    if (p < n && s[p] == delimiter) {
      if (p + 1 == n) *e++ = static_cast<uint32_t>(o - text);
      ++p;
      if (!strict) {
        while (p < n && IsBlank(s[p])) ++p;
      }
    }
  }
  return static_cast<size_t>(e - ends);
}

bool CanSplitUtf8(const TextFormat& f) {
  auto safe = [](char16_t c) { return c < 0x80 && c != 0 && c != u'\r' && c != u'\n'; };
  return f.strict && safe(f.delimiter) && (f.quote == 0 || safe(f.quote));
}

namespace {

inline bool IsByteLineEnd(uint8_t c) { return c == '\n' || c == '\r' || c == 0; }

// The split writes UTF-16 units or, for a line whose characters all lie
// below U+0100, one byte a character. A one-byte split gives up on meeting
// any other character: kNoFit.
template <typename Unit>
constexpr bool kOneByte = sizeof(Unit) == 1;
constexpr size_t kNoFit = 0;

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

#if defined(__SSE2__)
// Stores sixteen ASCII bytes as sixteen units.
inline void PutAscii16(__m128i v, char16_t* to) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_unpacklo_epi8(v, _mm_setzero_si128()));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to + 8), _mm_unpackhi_epi8(v, _mm_setzero_si128()));
}
inline void PutAscii16(__m128i v, uint8_t* to) { _mm_storeu_si128(reinterpret_cast<__m128i*>(to), v); }
#endif

// Copies ASCII bytes to `o` until a byte that is `stop`, a line break, 0 or
// above 0x7F. Sixteen bytes are stored at a time whatever their use; output
// never runs ahead of input by more than the room allows.
template <typename Unit>
inline void CopyAsciiUntil(const uint8_t*& s, const uint8_t* end, Unit*& o, uint8_t stop) {
#if defined(__SSE2__)
  const __m128i vs = _mm_set1_epi8(static_cast<char>(stop));
  const __m128i cr = _mm_set1_epi8('\r');
  const __m128i lf = _mm_set1_epi8('\n');
  const __m128i zero = _mm_setzero_si128();
  while (end - s >= 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s));
    PutAscii16(v, o);
    const __m128i hit = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(v, vs), _mm_cmpeq_epi8(v, zero)),
                                     _mm_or_si128(_mm_cmpeq_epi8(v, cr), _mm_cmpeq_epi8(v, lf)));
    const int mask = _mm_movemask_epi8(_mm_or_si128(hit, v));  // the sign bit marks bytes above 0x7F
    if (mask) {
      const int k = __builtin_ctz(static_cast<unsigned>(mask));
      s += k;
      o += k;
      return;
    }
    s += 16;
    o += 16;
  }
#endif
  while (s < end && *s < 0x80 && *s != stop && !IsByteLineEnd(*s)) *o++ = *s++;
}

// One cell from `s`: its text goes to `o` and its end to `e`. A delimiter
// after it is stepped over, and leaves an empty cell behind when the line
// ends right after it. A `continued` cell began before `s`, so a quote
// character at `s` is part of its text. False when a one-byte split meets a
// character that does not fit.
template <typename Unit>
inline bool SplitCellUtf8(const uint8_t*& s, const uint8_t* end, uint8_t delimiter, uint8_t quote, bool continued,
                          Unit*& o, const Unit* text, uint32_t*& e, char16_t& seen) {
  if (!continued && quote != 0 && *s == quote) {
    ++s;
    for (;;) {
      CopyAsciiUntil(s, end, o, quote);
      if (s >= end || IsByteLineEnd(*s)) break;  // never closed: the rest of the line
      if (*s == quote) {
        if (s + 1 < end && s[1] == quote) {
          *o++ = quote;
          s += 2;
          continue;
        }
        ++s;  // the closing quote
        break;
      }
      const size_t n = DecodeUtf8At(s, end, o, seen);
      if (kOneByte<Unit> && n == kNoFit) return false;
      s += n;
    }
  } else {
    for (;;) {
      CopyAsciiUntil(s, end, o, delimiter);
      if (s >= end || *s < 0x80) break;  // the delimiter, a line break or the end
      const size_t n = DecodeUtf8At(s, end, o, seen);
      if (kOneByte<Unit> && n == kNoFit) return false;
      s += n;
    }
  }
  *e++ = static_cast<uint32_t>(o - text);
  if (s < end && *s == delimiter) {
    ++s;
    if (s == end || IsByteLineEnd(*s)) *e++ = static_cast<uint32_t>(o - text);
  }
  return true;
}

#if defined(__SSE2__)
// Where in the 64 bytes at `p` the delimiter lies, and the other bytes that
// may end a run of plain text: the quote and, in one signed compare, codes 0
// to 13 (CR, LF and 0 among them) and bytes above 0x7F.
inline void MaskPiece(const uint8_t* p, __m128i delimiter, __m128i quote, Utf8LookAhead& m) {
  const __m128i fourteen = _mm_set1_epi8(14);
  m.delimiter = 0;
  m.other = 0;
  for (int k = 0; k < 64; k += 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + k));
    const __m128i d = _mm_cmpeq_epi8(v, delimiter);
    // A delimiter below 14, such as the tab, counts as a delimiter only.
    const __m128i other = _mm_andnot_si128(d, _mm_or_si128(_mm_cmplt_epi8(v, fourteen), _mm_cmpeq_epi8(v, quote)));
    m.delimiter |= uint64_t{static_cast<uint16_t>(_mm_movemask_epi8(d))} << k;
    m.other |= uint64_t{static_cast<uint16_t>(_mm_movemask_epi8(other))} << k;
  }
  m.base = reinterpret_cast<const char*>(p);
}

// Copies the ASCII bytes [p, p + n) to `o` sixteen at a time, reading and
// storing up to fifteen past them.
template <typename Unit>
inline void CopyAscii(const uint8_t* p, size_t n, Unit* o) {
  PutAscii16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)), o);
  if (n > 16) {
    for (size_t k = 16; k < n; k += 16) PutAscii16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p + k)), o + k);
  }
}
#endif

// SplitUtf8Line into UTF-16 units or one byte a character; a one-byte split
// returns kNotOneByte on the first character above U+00FF.
template <typename Unit>
size_t SplitUtf8Text(const char* bytes, const char* endBytes, const TextFormat& f, Unit* text, uint32_t* ends,
                     const char*& stop, Utf8LookAhead& look, bool& oneByte, bool dropRead) {
  char16_t seen = 0;
  const auto* line = reinterpret_cast<const uint8_t*>(bytes);
  const auto* s = line;
  const auto* end = reinterpret_cast<const uint8_t*>(endBytes);
  const auto delimiter = static_cast<uint8_t>(f.delimiter);
  const auto quote = static_cast<uint8_t>(f.quote);
  Unit* o = text;
  uint32_t* e = ends;
  bool continued = false;  // the cell at hand began before `s`
  ReadBytesDrop drop{bytes, dropRead};
#if defined(__SSE2__)
  const __m128i vd = _mm_set1_epi8(static_cast<char>(delimiter));
  const __m128i vq = _mm_set1_epi8(static_cast<char>(quote));
#endif
  for (;;) {
#if defined(__SSE2__)
    // The line is looked at 64 bytes at a time; the masks show where cells
    // end, so cells are cut without going byte by byte. Only a quoted cell
    // goes through SplitCellUtf8, and so does the end of the text, as a look
    // reads up to 80 bytes ahead. A line mostly starts within the last look
    // of the line before, which then serves again.
    const auto* lookBase = reinterpret_cast<const uint8_t*>(look.base);
    bool quoted = false;
    // A delimiter that is also the quote character is left to SplitCellUtf8.
    while (delimiter != quote) {
      unsigned from = 0;  // the first byte not yet taken
      if (lookBase != nullptr && s >= lookBase && s - lookBase < 64 && !continued) {
        from = static_cast<unsigned>(s - lookBase);
        s = lookBase;
      } else if (end - s >= 80) {
        MaskPiece(s, vd, vq, look);
      } else {
        break;
      }
      lookBase = nullptr;
      int cellStart = continued ? -1 : static_cast<int>(from);
      uint64_t delimiters = look.delimiter & (~uint64_t{0} << from);
      uint64_t others = look.other & (~uint64_t{0} << from);  // what lies ahead that is no delimiter
      for (;;) {
        // The delimiters before the next other byte each end a cell.
        const uint64_t before = others ? (others & (~others + 1)) - 1 : ~uint64_t{0};
        if (const uint64_t run = delimiters & before; run != 0) {
          auto units = static_cast<uint32_t>(o - text);
          for (uint64_t d = run; d != 0; d &= d - 1) {
            const auto q = static_cast<unsigned>(__builtin_ctzll(d));
            CopyAscii(s + from, q - from, text + units);
            units += q - from;
            *e++ = units;
            from = q + 1;
          }
          o = text + units;
          cellStart = static_cast<int>(from);
          delimiters &= ~before;
        }
        if (others == 0) break;
        const auto q = static_cast<unsigned>(__builtin_ctzll(others));
        others &= others - 1;
        const uint8_t c = s[q];
        if (IsByteLineEnd(c)) {
          // Also right after a delimiter: the empty cell that ends the line.
          CopyAscii(s + from, q - from, o);
          o += q - from;
          if (s + q != line) *e++ = static_cast<uint32_t>(o - text);  // else the line is empty
          stop = reinterpret_cast<const char*>(s + q);
          oneByte = seen < 0x100;
          return static_cast<size_t>(e - ends);
        }
        if (c >= 0x80) {
          CopyAscii(s + from, q - from, o);
          o += q - from;
          const size_t n = DecodeUtf8At(s + q, end, o, seen);
          if (kOneByte<Unit> && n == kNoFit) return kNotOneByte;
          from = q + static_cast<unsigned>(n);
          if (from >= 64) break;
          others &= ~uint64_t{0} << from;
          delimiters &= ~uint64_t{0} << from;
        } else if (c == quote && static_cast<int>(q) == cellStart) {
          quoted = true;  // a quoted cell, from `from`
          break;
        }
        // Else a control character, or a quote inside a cell: text like any
        // other (a delimiter among them is still ahead in `delimiters`).
      }
      if (quoted) {
        s += from;
        continued = false;
        break;
      }
      // What is left of the piece belongs to the cell at hand.
      if (from < 64) {
        CopyAscii(s + from, 64 - from, o);
        o += 64 - from;
        from = 64;
      }
      continued = cellStart != static_cast<int>(from);
      s += from;
      drop.Behind(s);
    }
#endif
    if (!continued && (s >= end || IsByteLineEnd(*s))) {
      // The line is empty, or a delimiter ended it: then an empty cell.
      if (s != line) *e++ = static_cast<uint32_t>(o - text);
      break;
    }
    if (!SplitCellUtf8(s, end, delimiter, quote, continued, o, text, e, seen)) return kNotOneByte;
    drop.Behind(s);
    continued = false;
    if (s >= end || IsByteLineEnd(*s)) break;
  }
  stop = reinterpret_cast<const char*>(s);
  oneByte = seen < 0x100;
  return static_cast<size_t>(e - ends);
}

}  // namespace

size_t SplitUtf8Line(const char* bytes, const char* end, const TextFormat& f, char16_t* text, uint32_t* ends,
                     const char*& stop, Utf8LookAhead& look, bool& oneByte, bool dropRead) {
  return SplitUtf8Text(bytes, end, f, text, ends, stop, look, oneByte, dropRead);
}

size_t SplitUtf8LineOneByte(const char* bytes, const char* end, const TextFormat& f, uint8_t* text, uint32_t* ends,
                            const char*& stop, Utf8LookAhead& look) {
  bool oneByte = true;
  return SplitUtf8Text(bytes, end, f, text, ends, stop, look, oneByte, false);
}


namespace {

// Copies [p, end) to `out`, sixteen or eight units a store. A store may pass
// the units kept by up to kJoinOverrun, and a load may pass `end`, never
// `limit` (the end of the text the units lie in).
inline char16_t* CopyUnits(const char16_t* p, const char16_t* end, char16_t* out, const char16_t* limit) {
  size_t n = static_cast<size_t>(end - p);
#if defined(__SSE2__)
  auto store = [](char16_t* to, const char16_t* from) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), simd::Load(from));
  };
  if (n <= 16 && limit - p >= 16) {
    // Most cells: two loads and two stores, whatever their length.
    store(out, p);
    store(out + 8, p + 8);
    return out + n;
  }
  for (; n >= 8; n -= 8, p += 8, out += 8) store(out, p);
  if (n > 0 && limit - p >= 8) {
    store(out, p);
    return out + n;
  }
#endif
  for (; n > 0; --n) *out++ = *p++;
  return out;
}

// The same from one-byte text, widened sixteen units a step.
inline char16_t* CopyUnits(const uint8_t* p, const uint8_t* end, char16_t* out, const uint8_t* limit) {
  size_t n = static_cast<size_t>(end - p);
#if defined(__SSE2__)
  const __m128i zero = _mm_setzero_si128();
  auto widen16 = [&](char16_t* to, const uint8_t* from) {
    const __m128i v = simd::Load(from);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_unpacklo_epi8(v, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to + 8), _mm_unpackhi_epi8(v, zero));
  };
  for (; n >= 16; n -= 16, p += 16, out += 16) widen16(out, p);
  if (n > 0 && limit - p >= 16) {
    widen16(out, p);
    return out + n;
  }
#endif
  for (; n > 0; --n) *out++ = *p++;
  return out;
}

// The same from one-byte text to bytes.
inline uint8_t* CopyUnits(const uint8_t* p, const uint8_t* end, uint8_t* out, const uint8_t* limit) {
  size_t n = static_cast<size_t>(end - p);
#if defined(__SSE2__)
  auto store = [](uint8_t* to, const uint8_t* from) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), simd::Load(from));
  };
  for (; n >= 16; n -= 16, p += 16, out += 16) store(out, p);
  if (n > 0 && limit - p >= 16) {
    store(out, p);
    return out + n;
  }
#endif
  CopyBytes(out, p, n);
  return out + n;
}

// The same from one-byte text to UTF-8: a run of ASCII is copied sixteen
// bytes a store, any other character becomes its two bytes. No branch on the
// character: both bytes of the two-byte form are stored for every one, the
// lead byte replaced by the character itself below U+0080, and the output
// moves on by one or two; the second byte stored for an ASCII character is
// overwritten by what follows, and lies within the room a line is given
// (two bytes a character).
inline char8_t* ExpandLatin1(const uint8_t* p, size_t n, char8_t* out) {
  for (; n > 0; --n) {
    const uint32_t c = *p++;
    const uint32_t wide = c >> 7;  // 1 from U+0080 on
    const uint32_t lead = c ^ ((c ^ (0xC0 | (c >> 6))) & (0u - wide));
    out[0] = static_cast<char8_t>(lead);
    out[1] = static_cast<char8_t>(0x80 | (c & 0x3F));
    out += 1 + wide;
  }
  return out;
}

inline char8_t* CopyUnits(const uint8_t* p, const uint8_t* end, char8_t* out, const uint8_t* limit) {
  size_t n = static_cast<size_t>(end - p);
#if defined(__SSE2__)
  for (; n >= 16; n -= 16, p += 16) {
    const __m128i v = simd::Load(p);
    if (_mm_movemask_epi8(v) == 0) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out), v);
      out += 16;
    } else {
      out = ExpandLatin1(p, 16, out);
    }
  }
  if (n > 0 && limit - p >= 16) {
    const __m128i v = simd::Load(p);
    if ((_mm_movemask_epi8(v) & ((1 << n) - 1)) == 0) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out), v);
      return out + n;
    }
  }
#endif
  return ExpandLatin1(p, n, out);
}

// A cell in quotes, its quote characters doubled.
template <typename Unit, typename Out>
inline Out* CopyQuoted(const Unit* p, const Unit* end, Out quote, Out* out, const Unit* limit) {
  *out++ = quote;
  for (;;) {
    const Unit* q = simd::Find(p, end, quote);
    out = CopyUnits(p, q, out, limit);
    if (q == end) break;
    *out++ = quote;
    *out++ = quote;
    p = q + 1;
  }
  *out++ = quote;
  return out;
}

template <typename Unit, typename Out>
Out* WriteJoinedCells(const Record::Cells& cells, const Unit* text, const TextFormat& f, Out* out) {
  const int32_t count = cells.Count();
  // Kept apart from `f`: stores through `out` could otherwise change them.
  const auto delimiter = static_cast<Out>(f.delimiter);
  const auto quote = static_cast<Out>(f.quote);
  // One look over the record's text, whose cells lie back to back, finds the
  // first character that may call for quotes; usually there is none, and
  // after one the look goes on from the next cell.
  const Unit* limit = text + cells.All().size();
  const Unit* trigger = quote == 0 ? limit : FindQuoteTrigger(text, limit, f);
  const Unit* begin = text;
  for (int32_t k = 0; k < count; ++k) {
    const Unit* end = text + cells.End(k);
    if (trigger >= end) {
      out = CopyUnits(begin, end, out, limit);
    } else {
      // A character 0 ends the check: such a cell goes out as it is.
      out = *trigger != 0 ? CopyQuoted(begin, end, quote, out, limit) : CopyUnits(begin, end, out, limit);
      trigger = FindQuoteTrigger(end, limit, f);
    }
    // Every cell is followed by the delimiter, the last one's taken back.
    *out++ = delimiter;
    begin = end;
  }
  return out - 1;
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

bool CanJoinAsBytes(const Record& record, const TextFormat& f, char16_t below) {
  return record.IsNarrow() && f.delimiter < below && f.quote < below;
}

uint8_t* WriteJoinedBytes(const Record& record, const TextFormat& f, uint8_t* out) {
  const Record::Cells cells = record.AllCells();
  if (cells.Count() == 0 || WriteLoneEmptyCell(cells, f, out)) return out;
  return WriteJoinedCells(cells, cells.All().Bytes(), f, out);
}

char8_t* WriteJoinedUtf8(const Record& record, const TextFormat& f, char8_t* out) {
  const Record::Cells cells = record.AllCells();
  if (cells.Count() == 0 || WriteLoneEmptyCell(cells, f, out)) return out;
  return WriteJoinedCells(cells, cells.All().Bytes(), f, out);
}

void AppendJoinedRecord(const Record& record, const TextFormat& format, std::u16string& out) {
  const size_t old = out.size();
  out.resize(old + JoinedRecordMaxUnits(record));
  char16_t* end = WriteJoinedRecord(record, format, out.data() + old);
  out.resize(static_cast<size_t>(end - out.data()));
}

}  // namespace qm
