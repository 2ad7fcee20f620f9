#include "table/line_splitter.h"

#include "core/simd_copy.h"
#include "core/simd_scan.h"
#include "table/spent_pages.h"

namespace qm {

namespace {

constexpr bool IsBlank(char16_t c) { return c >= 1 && c <= 32; }

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
  SpentPages drop(s, dropRead);
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

}  // namespace qm
