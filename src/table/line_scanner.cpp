#include "table/line_scanner.h"

#include <cstring>

#include "table/simd_scan.h"
#include "table/text_encoding.h"

namespace qm {

namespace {

constexpr bool IsBlank(char16_t c) { return c >= 1 && c <= 32; }

// The first character that matters for quoting: the quote character, the
// delimiter, a character 0 and, when not strict, codes 1 to 32.
inline const char16_t* FindQuoteTrigger(std::u16string_view text, const TextFormat& f) {
  const char16_t* end = text.data() + text.size();
  return f.strict ? simd::FindAny3(text.data(), end, 0, f.quote, f.delimiter)
                  : simd::FindBlankOr2(text.data(), end, f.quote, f.delimiter);
}

// Mirrors the writer's rule, including that a character 0 ends the check.
inline bool NeedsQuotes(std::u16string_view cell, const TextFormat& f) {
  const char16_t* hit = FindQuoteTrigger(cell, f);
  return hit != cell.data() + cell.size() && *hit != 0;
}

}  // namespace

bool TextLineCursor::Next(std::u16string_view& line) {
  if (p_ >= end_) return false;
  const char16_t* start = p_;
  const char16_t* q = simd::FindAny3(start, end_, u'\n', u'\r', 0);
  line = std::u16string_view(start, static_cast<size_t>(q - start));
  if (q == end_) {
    p_ = end_;
    return true;
  }
  if (*q == 0) {
    nul_ = true;
    p_ = end_ = q;
    return q != start;
  }
  p_ = (*q == 13 && q + 1 < end_ && q[1] == 10) ? q + 2 : q + 1;
  return true;
}

size_t SplitLineInto(std::u16string_view line, const TextFormat& f, char16_t* text, uint32_t* ends) {
  const char16_t* s = line.data();
  const size_t n = line.size();
  const char16_t quote = f.quote;
  const char16_t delimiter = f.delimiter;
  const bool strict = f.strict;
  char16_t* o = text;
  uint32_t* e = ends;
  size_t p = 0;
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
      const size_t run = simd::CopyUntil(s + p, n - p, o, delimiter);
      p += run;
      o += run;
    } else {
      const size_t begin = p;
      while (p < n && s[p] != delimiter && !IsBlank(s[p])) ++p;
      std::memcpy(o, s + begin, (p - begin) * sizeof(char16_t));
      o += p - begin;
    }
    *e++ = static_cast<uint32_t>(o - text);
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

// The common two- and three-byte forms inline; everything else, malformed
// bytes included, through the full decoder.
inline size_t DecodeUtf8At(const uint8_t* s, const uint8_t* end, char16_t*& o) {
  if (s[0] >= 0xC2 && s[0] <= 0xDF && end - s >= 2 && (s[1] & 0xC0) == 0x80) {
    *o++ = static_cast<char16_t>(((s[0] & 0x1Fu) << 6) | (s[1] & 0x3Fu));
    return 2;
  }
  if ((s[0] & 0xF0) == 0xE0 && s[0] != 0xE0 && s[0] != 0xED && end - s >= 3 && (s[1] & 0xC0) == 0x80 &&
      (s[2] & 0xC0) == 0x80) {
    *o++ = static_cast<char16_t>(((s[0] & 0x0Fu) << 12) | ((s[1] & 0x3Fu) << 6) | (s[2] & 0x3Fu));
    return 3;
  }
  return DecodeUtf8Sequence(reinterpret_cast<const char*>(s), static_cast<size_t>(end - s), o);
}

// Copies ASCII bytes widened to `o` until a byte that is `stop`, a line
// break, 0 or above 0x7F. Sixteen bytes are stored at a time whatever their
// use; output never runs ahead of input by more than the room allows.
inline void CopyAsciiUntil(const uint8_t*& s, const uint8_t* end, char16_t*& o, uint8_t stop) {
#if defined(__SSE2__)
  const __m128i vs = _mm_set1_epi8(static_cast<char>(stop));
  const __m128i cr = _mm_set1_epi8('\r');
  const __m128i lf = _mm_set1_epi8('\n');
  const __m128i zero = _mm_setzero_si128();
  while (end - s >= 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(o), _mm_unpacklo_epi8(v, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(o + 8), _mm_unpackhi_epi8(v, zero));
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

}  // namespace

size_t SplitUtf8Line(const char* bytes, const char* endBytes, const TextFormat& f, char16_t* text, uint32_t* ends,
                     const char*& stop) {
  const auto* s = reinterpret_cast<const uint8_t*>(bytes);
  const auto* end = reinterpret_cast<const uint8_t*>(endBytes);
  const auto delimiter = static_cast<uint8_t>(f.delimiter);
  const auto quote = static_cast<uint8_t>(f.quote);
  char16_t* o = text;
  uint32_t* e = ends;
  while (s < end && !IsByteLineEnd(*s)) {
    if (quote != 0 && *s == quote) {
      ++s;
      for (;;) {
        CopyAsciiUntil(s, end, o, quote);
        if (s >= end || IsByteLineEnd(*s)) break;  // never closed: the rest of the line
        if (*s == quote) {
          if (s + 1 < end && s[1] == quote) {
            *o++ = f.quote;
            s += 2;
            continue;
          }
          ++s;  // the closing quote
          break;
        }
        s += DecodeUtf8At(s, end, o);
      }
    } else {
      for (;;) {
        CopyAsciiUntil(s, end, o, delimiter);
        if (s >= end || *s < 0x80) break;  // the delimiter, a line break or the end
        s += DecodeUtf8At(s, end, o);
      }
    }
    *e++ = static_cast<uint32_t>(o - text);
    if (s < end && *s == delimiter) {
      ++s;
      // A delimiter that ends the line leaves one empty cell behind it.
      if (s == end || IsByteLineEnd(*s)) *e++ = static_cast<uint32_t>(o - text);
    }
  }
  stop = reinterpret_cast<const char*>(s);
  return static_cast<size_t>(e - ends);
}

size_t JoinedRecordMaxUnits(const Record& record) {
  const Record::Cells cells = record.AllCells();
  if (cells.Count() == 0) return 0;
  return 2 * cells.All().size() + 3 * static_cast<size_t>(cells.Count()) + 2;
}

namespace {

// Copies a cell; short cells are common, so no library call for them.
inline char16_t* CopyCell(std::u16string_view cell, char16_t* out) {
  const char16_t* in = cell.data();
  size_t n = cell.size();
#if defined(__SSE2__)
  for (; n >= 8; n -= 8, in += 8, out += 8) _mm_storeu_si128(reinterpret_cast<__m128i*>(out), simd::Load(in));
#endif
  for (; n > 0; --n) *out++ = *in++;
  return out;
}

}  // namespace

char16_t* WriteJoinedRecord(const Record& record, const TextFormat& f, char16_t* out) {
  const Record::Cells cells = record.AllCells();
  const int32_t count = cells.Count();
  if (count == 1 && cells[0].empty()) {
    if (f.quote != 0) {
      *out++ = f.quote;
      *out++ = f.quote;
    }
    return out;
  }
  if (count == 0) return out;
  // The cells lie back to back, so one look at the whole record usually
  // shows that no cell needs quotes.
  const std::u16string_view all = cells.All();
  const bool plain = f.quote == 0 || FindQuoteTrigger(all, f) == all.data() + all.size();
  for (int32_t k = 0; k < count; ++k) {
    if (k) *out++ = f.delimiter;
    const std::u16string_view cell = cells[k];
    if (plain || !NeedsQuotes(cell, f)) {
      out = CopyCell(cell, out);
      continue;
    }
    *out++ = f.quote;
    for (const char16_t c : cell) {
      if (c == f.quote) *out++ = c;
      *out++ = c;
    }
    *out++ = f.quote;
  }
  return out;
}

bool CanJoinUtf8(const TextFormat& f) {
  auto surrogate = [](char16_t c) { return c >= 0xD800 && c <= 0xDFFF; };
  return !surrogate(f.delimiter) && !surrogate(f.quote);
}

namespace {

// One unit that is not a surrogate.
inline char* EncodeUnitUtf8(char16_t c, char* out) {
  if (c < 0x80) {
    *out++ = static_cast<char>(c);
  } else if (c < 0x800) {
    *out++ = static_cast<char>(0xC0 | (c >> 6));
    *out++ = static_cast<char>(0x80 | (c & 0x3F));
  } else {
    *out++ = static_cast<char>(0xE0 | (c >> 12));
    *out++ = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    *out++ = static_cast<char>(0x80 | (c & 0x3F));
  }
  return out;
}

// ASCII sixteen or eight units at a time, other characters of the Basic
// Multilingual Plane inline, surrogates through the full encoder. A piece may
// read past the cell, never past `limit` (the end of the text the cell lies
// in), and store up to fifteen bytes past what it writes, which whatever
// follows overwrites: callers leave that room.
inline char* EncodeCellUtf8(const char16_t* in, size_t n, char* out, const char16_t* limit) {
  size_t k = 0;
#if defined(__SSE2__)
  const __m128i high = _mm_set1_epi16(static_cast<short>(0xFF80));
  const __m128i zero = _mm_setzero_si128();
  if (n <= 16 && limit - in >= 16) {
    // Most cells: sixteen units looked at once, and written in one store
    // when they are ASCII.
    const __m128i a = simd::Load(in);
    const __m128i b = simd::Load(in + 8);
    const unsigned needed = n == 16 ? 0xFFFFu : (1u << n) - 1;
    const auto ascii = static_cast<unsigned>(_mm_movemask_epi8(
        _mm_packs_epi16(_mm_cmpeq_epi16(_mm_and_si128(a, high), zero), _mm_cmpeq_epi16(_mm_and_si128(b, high), zero))));
    if ((ascii & needed) == needed) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(a, b));
      return out + n;
    }
  }
#endif
  while (k < n) {
#if defined(__SSE2__)
    if (limit - (in + k) >= 8) {
      const __m128i v = simd::Load(in + k);
      const auto ascii = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi16(_mm_and_si128(v, high), zero)));
      const size_t take = n - k < 8 ? n - k : 8;
      const unsigned needed = take == 8 ? 0xFFFFu : (1u << (2 * take)) - 1;
      _mm_storel_epi64(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(v, v));
      if ((ascii & needed) == needed) {
        out += take;
        k += take;
        continue;
      }
      const auto run = static_cast<size_t>(__builtin_ctz(~ascii & needed)) / 2;  // ASCII units before the other one
      out += run;
      k += run;
    }
#endif
    if (in[k] >= 0xD800 && in[k] <= 0xDFFF) return out + EncodeInto(TextEncoding::UTF8, in + k, n - k, out);
    out = EncodeUnitUtf8(in[k++], out);
  }
  return out;
}

}  // namespace

char* WriteJoinedRecordUtf8(const Record& record, const TextFormat& f, char* out, std::u16string& scratch) {
  const Record::Cells cells = record.AllCells();
  const int32_t count = cells.Count();
  if (count == 1 && cells[0].empty()) {
    if (f.quote != 0) {
      out = EncodeUnitUtf8(f.quote, out);  // CanJoinUtf8: never a surrogate
      out = EncodeUnitUtf8(f.quote, out);
    }
    return out;
  }
  if (count == 0) return out;
  char delimiter[4];
  const size_t delimiterBytes = static_cast<size_t>(EncodeUnitUtf8(f.delimiter, delimiter) - delimiter);
  const std::u16string_view all = cells.All();
  const bool plain = f.quote == 0 || FindQuoteTrigger(all, f) == all.data() + all.size();
  const char16_t* limit = all.data() + all.size();
  for (int32_t k = 0; k < count; ++k) {
    if (k) {
      if (delimiterBytes == 1) {
        *out++ = delimiter[0];
      } else {
        std::memcpy(out, delimiter, delimiterBytes);
        out += delimiterBytes;
      }
    }
    const std::u16string_view cell = cells[k];
    if (plain || !NeedsQuotes(cell, f)) {
      out = EncodeCellUtf8(cell.data(), cell.size(), out, limit);
      continue;
    }
    scratch.assign(1, f.quote);
    for (const char16_t c : cell) {
      if (c == f.quote) scratch.push_back(c);
      scratch.push_back(c);
    }
    scratch.push_back(f.quote);
    out = EncodeCellUtf8(scratch.data(), scratch.size(), out, scratch.data() + scratch.size());
  }
  return out;
}

void AppendJoinedRecord(const Record& record, const TextFormat& format, std::u16string& out) {
  const size_t old = out.size();
  out.resize(old + JoinedRecordMaxUnits(record));
  char16_t* end = WriteJoinedRecord(record, format, out.data() + old);
  out.resize(static_cast<size_t>(end - out.data()));
}

}  // namespace qm
