#include "table/line_scanner.h"

#include <cstring>

namespace qm {

namespace {

constexpr bool IsBlank(char16_t c) { return c >= 1 && c <= 32; }

inline bool IsLineEnd(char16_t c) { return c <= 13 && (c == 10 || c == 13 || c == 0); }

// Mirrors the writer's rule: stop at a character 0 as the check did not see
// past it.
inline bool NeedsQuotes(std::u16string_view cell, const TextFormat& f) {
  const char16_t* p = cell.data();
  const char16_t* end = p + cell.size();
  if (f.strict) {
    for (; p < end; ++p) {
      const char16_t c = *p;
      if (c == 0) return false;
      if (c == f.quote || c == f.delimiter) return true;
    }
  } else {
    for (; p < end; ++p) {
      const char16_t c = *p;
      if (c <= 32) return c != 0;
      if (c == f.quote || c == f.delimiter) return true;
    }
  }
  return false;
}

}  // namespace

bool TextLineCursor::Next(std::u16string_view& line) {
  if (p_ >= end_) return false;
  const char16_t* start = p_;
  const char16_t* q = start;
  while (q < end_ && !IsLineEnd(*q)) ++q;
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

std::vector<std::u16string> SplitTextLines(std::u16string_view text) {
  std::vector<std::u16string> lines;
  TextLineCursor cursor(text);
  for (std::u16string_view line; cursor.Next(line);) lines.emplace_back(line);
  return lines;
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
      const size_t begin = p;
      while (p < n && s[p] != delimiter) ++p;
      std::memcpy(o, s + begin, (p - begin) * sizeof(char16_t));
      o += p - begin;
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

void AppendJoinedRecord(const Record& record, const TextFormat& f, std::u16string& out) {
  const int32_t count = record.Count();
  if (count == 1 && record.Cell(0).empty()) {
    if (f.quote != 0) out.append(2, f.quote);
    return;
  }
  for (int32_t k = 0; k < count; ++k) {
    if (k) out.push_back(f.delimiter);
    const std::u16string_view cell = record.Cell(k);
    if (f.quote == 0 || !NeedsQuotes(cell, f)) {
      out.append(cell);
      continue;
    }
    out.push_back(f.quote);
    size_t start = 0;
    for (size_t i = 0; i < cell.size(); ++i) {
      if (cell[i] == f.quote) {
        out.append(cell.substr(start, i + 1 - start));
        out.push_back(f.quote);
        start = i + 1;
      }
    }
    out.append(cell.substr(start));
    out.push_back(f.quote);
  }
}

}  // namespace qm
