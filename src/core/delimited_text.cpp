#include "core/delimited_text.h"

namespace qm {

namespace {

constexpr bool IsBlank(char16_t c) { return c >= 1 && c <= 32; }

bool NeedsQuotes(std::u16string_view cell, const TextFormat& f) {
  for (char16_t c : cell) {
    if (c == 0) return false;  // the text ends here as far as quoting is concerned
    if (c == f.quote || c == f.delimiter || (!f.strict && IsBlank(c))) return true;
  }
  return false;
}

}  // namespace

namespace detail {

void AppendDelimitedCell(std::u16string_view cell, const TextFormat& f, std::u16string& line) {
  if (f.quote == 0 || !NeedsQuotes(cell, f)) {
    line.append(cell);
    return;
  }
  line.push_back(f.quote);
  for (char16_t c : cell) {
    if (c == f.quote) line.push_back(c);
    line.push_back(c);
  }
  line.push_back(f.quote);
}

}  // namespace detail

void SplitDelimited(std::u16string_view s, const TextFormat& f, std::vector<std::u16string>& cells) {
  cells.clear();
  const size_t n = s.size();
  size_t p = 0;
  if (!f.strict) {
    while (p < n && IsBlank(s[p])) ++p;
  }
  while (p < n) {
    std::u16string cell;
    if (f.quote != 0 && s[p] == f.quote) {
      ++p;
      while (p < n) {
        if (s[p] == f.quote) {
          if (p + 1 < n && s[p + 1] == f.quote) {
            cell.push_back(f.quote);
            p += 2;
            continue;
          }
          ++p;  // closing quote
          break;
        }
        cell.push_back(s[p++]);
      }
    } else {
      const size_t begin = p;
      while (p < n && s[p] != f.delimiter && (f.strict || !IsBlank(s[p]))) ++p;
      cell.assign(s.substr(begin, p - begin));
    }
    cells.push_back(std::move(cell));
    if (!f.strict) {
      while (p < n && IsBlank(s[p])) ++p;
    }
    if (p < n && s[p] == f.delimiter) {
      if (p + 1 == n) cells.emplace_back();
      ++p;
      if (!f.strict) {
        while (p < n && IsBlank(s[p])) ++p;
      }
    }
  }
}

std::vector<std::u16string> SplitDelimited(std::u16string_view line, const TextFormat& format) {
  std::vector<std::u16string> cells;
  SplitDelimited(line, format, cells);
  return cells;
}

std::u16string JoinDelimited(const std::vector<std::u16string>& cells, const TextFormat& format) {
  std::u16string line;
  JoinDelimited(
      cells.size(), [&cells](size_t k) { return std::u16string_view(cells[k]); }, format, line);
  return line;
}

}  // namespace qm
