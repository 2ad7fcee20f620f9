// Splitting one line into cells and joining cells into one line, with a
// delimiter, an optional quote character and the strict-delimiter switch.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qm {

struct TextFormat {
  char16_t delimiter = u';';
  char16_t quote = u'"';  // 0: no quoting
  bool strict = true;     // false: blanks and control characters also end a plain cell
};

// The comma text used for stored conditions, loop rows and duplicate keys.
inline constexpr TextFormat kCommaText{u',', u'"', false};

// Splits a line into cells. An empty line gives no cells; a delimiter at the
// very end gives a trailing empty cell; a quote that is never closed takes the
// rest of the line; text right after a closing quote starts a cell of its own.
void SplitDelimited(std::u16string_view line, const TextFormat& format, std::vector<std::u16string>& cells);
std::vector<std::u16string> SplitDelimited(std::u16string_view line, const TextFormat& format);

// Joins cells into a line, quoting a cell that holds the quote character, the
// delimiter or (not strict) a character with code 1 to 32. A single empty cell
// is written as two quote characters so that it survives a reload. Without a
// quote character cells are written as they are.
// `cellAt(k)` gives cell k of `count` as a text view.
template <typename CellAt>
void JoinDelimited(size_t count, CellAt&& cellAt, const TextFormat& format, std::u16string& line);
std::u16string JoinDelimited(const std::vector<std::u16string>& cells, const TextFormat& format);

namespace detail {
void AppendDelimitedCell(std::u16string_view cell, const TextFormat& format, std::u16string& line);
}

template <typename CellAt>
void JoinDelimited(size_t count, CellAt&& cellAt, const TextFormat& format, std::u16string& line) {
  line.clear();
  if (count == 1 && std::u16string_view(cellAt(size_t{0})).empty()) {
    if (format.quote != 0) line.append(2, format.quote);
    return;
  }
  for (size_t k = 0; k < count; ++k) {
    if (k) line.push_back(format.delimiter);
    detail::AppendDelimitedCell(cellAt(k), format, line);
  }
}

}  // namespace qm
