// The reader's view of CSV text: one line at a time from a line list, a
// text or a file, with the rules that skip lines; each data line is split
// into a LineSplitter.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/text_lines.h"
#include "table/line_splitter.h"

namespace qm {

// The reader's skip rules for blank and comment lines.
struct SkipRules {
  bool blank = false;
  std::u16string_view comment;  // empty: comments are not skipped

  bool Skips(std::u16string_view line) const;
};

// Hands the reader one line at a time.
class CsvLineSource {
 public:
  virtual ~CsvLineSource() = default;
  // The next raw line; false at the end of the text. The view stays valid
  // until the next call.
  virtual bool Next(std::u16string_view& line) = 0;
  // The next line: `skipped` when the rules drop it, else split into
  // `splitter` with `count` cells. False at the end of the text.
  virtual bool NextData(const SkipRules& rules, LineSplitter& splitter, size_t minCells, bool& skipped, size_t& count);
  // About how many lines there are, for pre-sizing the record list.
  virtual size_t LineCountHint() const = 0;
};

// The lines of a list, each taken whole.
class ListLines final : public CsvLineSource {
 public:
  explicit ListLines(const std::vector<std::u16string>& lines) : lines_(lines) {}
  bool Next(std::u16string_view& line) override;
  size_t LineCountHint() const override { return lines_.size(); }

 private:
  const std::vector<std::u16string>& lines_;
  size_t next_ = 0;
};

// The lines of a text (CR LF, CR or LF; a character 0 ends it).
class TextLines final : public CsvLineSource {
 public:
  explicit TextLines(std::u16string_view text);
  bool Next(std::u16string_view& line) override { return cursor_.Next(line); }
  size_t LineCountHint() const override { return hint_; }

 private:
  TextLineCursor cursor_;
  size_t hint_;
};

}  // namespace qm
