// CSV Filter Data: the row removal against the plain walk from the last row
// down, an error half way included (the golden filter tasks cover the action).
#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "core/errors.h"
#include "loop/filter_data.h"
#include "loop/record_filter.h"
#include "table/record.h"
#include "table/simple_csv_object.h"

namespace qm {
namespace {

std::vector<std::u16string> Rows(const TSimpleCSVDataClass& table) {
  std::vector<std::u16string> rows;
  for (const Record& record : table.Storage().Records()) {
    std::u16string line;
    for (int32_t i = 0; i < record.Count(); ++i) line += (i ? u"|" : u"") + std::u16string(record.Cell(i));
    rows.push_back(line);
  }
  return rows;
}

// The removal as the action describes it: test each row from the last one
// down and delete a failing row at once.
void ReferenceFilter(TSimpleCSVDataClass& table, TRecordFilterList& filters, bool reverse) {
  for (int32_t row = table.RecordCount(); row-- > 0;) {
    if ((filters.CheckFilters(*table.GetRow(row), row) != reverse) == false) table.RemoveRow(row);
  }
}

std::vector<std::u16string_view> SplitCells(std::u16string_view line) {
  std::vector<std::u16string_view> cells;
  for (size_t start = 0;;) {
    const size_t end = line.find(u';', start);
    cells.push_back(line.substr(start, end == std::u16string_view::npos ? line.npos : end - start));
    if (end == std::u16string_view::npos) return cells;
    start = end + 1;
  }
}

struct Outcome {
  std::vector<std::u16string> rows;
  std::optional<std::u16string> error;
};

template <typename Filter>
Outcome RunFilter(const std::vector<std::u16string>& lines, std::initializer_list<std::u16string_view> conditions,
                  bool orMode, bool reverse, Filter filter) {
  // Records as they are, not padded to a common length as a loaded table's
  // would be, so that short rows can meet a condition on a missing column.
  TSimpleCSVDataClass table;
  for (const auto& line : lines) table.Storage().AppendRecord(Record(SplitCells(line)));
  TRecordFilterList filters;
  filters.SetOrFilterMode(orMode);
  for (auto line : conditions) filters.AddFilter(line);
  Outcome outcome;
  try {
    filter(table, filters, reverse);
  } catch (const QmError& e) {
    outcome.error = e.Message();
  }
  outcome.rows = Rows(table);
  return outcome;
}

// Random tables of short rows, so that an index error strikes anywhere, with
// random conditions in both modes.
TEST(FilterRows, AgreesWithTheWalkOnRandomTables) {
  std::mt19937 random(20240611);
  const std::u16string_view letters = u"abcAB";
  const std::u16string_view conditions[] = {u"1,a,0,0", u"2,b,1,0", u"1,^[ab],0,1", u"3,c,0,0", u"2,,0,0"};
  for (int round = 0; round < 400; ++round) {
    std::vector<std::u16string> lines;
    const int rows = static_cast<int>(random() % 30);
    for (int r = 0; r < rows; ++r) {
      std::u16string line;
      const int cells = 1 + static_cast<int>(random() % (round % 3 == 0 ? 2 : 3));
      for (int k = 0; k < cells; ++k) {
        if (k) line += u';';
        line += letters[random() % letters.size()];
        line += letters[random() % letters.size()];
      }
      lines.push_back(line);
    }
    const auto first = conditions[random() % 5];
    const auto second = conditions[random() % 5];
    const bool orMode = random() % 2 != 0;
    const bool reverse = random() % 2 != 0;
    const Outcome mine = RunFilter(lines, {first, second}, orMode, reverse, FilterRows);
    const Outcome reference = RunFilter(lines, {first, second}, orMode, reverse, ReferenceFilter);
    ASSERT_EQ(mine.rows, reference.rows) << "round " << round;
    ASSERT_EQ(mine.error, reference.error) << "round " << round;
  }
}

}  // namespace
}  // namespace qm
