// Record conditions: the first line is a stored condition (comma text: column,
// expression, case flag, regular-expression flag), the second a pattern tried
// directly with the interpreter and the JIT, and every later line a record cut
// at tabs that both must be checked against. Errors of bad conditions and
// patterns are the library's exceptions; anything else is a fault.
#include <string>
#include <vector>

#include "core/errors.h"
#include "core/utf.h"
#include "fuzz_input.h"
#include "loop/record_filter.h"
#include "loop/regex.h"
#include "table/record.h"

namespace {

std::vector<std::u16string_view> Split(std::u16string_view text, char16_t at) {
  std::vector<std::u16string_view> parts;
  size_t start = 0;
  for (;;) {
    const size_t end = text.find(at, start);
    parts.push_back(text.substr(start, end == std::u16string_view::npos ? end : end - start));
    if (end == std::u16string_view::npos) return parts;
    start = end + 1;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  qm::fuzz::Input input(data, size);
  const uint8_t mode = input.Byte();
  const std::u16string text = mode & 1 ? input.RestAsUnits() : qm::Utf8ToUtf16(input.Rest());
  const std::vector<std::u16string_view> lines = Split(text, u'\n');

  std::vector<qm::Record> records;
  for (size_t k = 2; k < lines.size() && records.size() < 64; ++k) {
    const std::vector<std::u16string_view> cells = Split(lines[k], u'\t');
    records.emplace_back(cells);
  }

  qm::TRecordFilterList list;
  list.SetOrFilterMode(mode & 2);
  try {
    list.AddFilter(lines[0]);
  } catch (const qm::EConvertError&) {
  }
  if (lines.size() > 1) {
    const qm::ConditionFields fields = qm::SplitCondition(lines[0]);
    (void)qm::SplitCondition(qm::JoinCondition(fields));
    list.AddFilter(static_cast<int32_t>(mode >> 4) - 1, lines[1], mode & 4, mode & 8);
  }
  for (const qm::Record& record : records) {
    try {
      (void)list.CheckFilters(record, 0);
    } catch (const qm::ERegexError&) {
    } catch (const qm::EListError&) {
    }
  }

  if (lines.size() > 1) {
    qm::Regex interpreted(std::u16string(lines[1]), mode & 4, false);
    qm::Regex jitted(std::u16string(lines[1]), mode & 4, true);
    for (const qm::Record& record : records) {
      for (int32_t column = 0; column < record.Count(); ++column) {
        const std::u16string cell = record.Cell(column).ToString();
        bool a = false;
        bool b = false;
        bool failedA = false;
        bool failedB = false;
        try {
          a = interpreted.Search(cell);
        } catch (const qm::ERegexError&) {
          failedA = true;
        }
        try {
          b = jitted.Search(cell);
        } catch (const qm::ERegexError&) {
          failedB = true;
        }
        // The two engines agree unless one ran out of its budget.
        if (!failedA && !failedB && a != b) __builtin_trap();
      }
    }
  }
  return 0;
}
