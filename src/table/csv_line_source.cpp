#include "table/csv_line_source.h"

#include <algorithm>

#include "core/convert.h"

namespace qm {

bool SkipRules::Skips(std::u16string_view line) const {
  if (blank && Trim(line).empty()) return true;
  return !comment.empty() && line.substr(0, comment.size()) == comment;
}

bool CsvLineSource::NextData(const SkipRules& rules, LineSplitter& splitter, size_t minCells, bool& skipped,
                             size_t& count) {
  std::u16string_view line;
  if (!Next(line)) return false;
  skipped = rules.Skips(line);
  if (!skipped) count = splitter.Split(line, minCells);
  return true;
}

bool ListLines::Next(std::u16string_view& line) {
  if (next_ >= lines_.size()) return false;
  line = lines_[next_++];
  return true;
}

TextLines::TextLines(std::u16string_view text)
    : cursor_(text), hint_(static_cast<size_t>(std::count(text.begin(), text.end(), u'\n')) + 1) {}

}  // namespace qm
