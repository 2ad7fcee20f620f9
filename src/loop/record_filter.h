// Record conditions and the filter list: which rows a Data Loop visits and a
// Filter Data step keeps or deletes. A condition tests one cell of a row for a
// substring or a regular expression; the list combines its conditions with AND
// or OR. Conditions are stored in a step's parameters as one comma-text line
// each ("2,\"New York\",0,0": column from 1, expression, case-sensitive flag,
// regular-expression flag) under the keys condition00000000, condition00000001...
// (task/condition_text.h).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "loop/regex.h"
#include "task/condition_text.h"
#include "table/record.h"

namespace qm {

// One condition on the cell at a zero-based column.
class TCSVRecordFilter {
 public:
  // AColNum: zero-based column. AExpression: the substring, or the pattern when
  // AsRegexp. ACase: case-sensitive. A pattern is compiled at its first
  // evaluation, so a malformed one only fails a row that reaches it.
  TCSVRecordFilter(int32_t AColNum, std::u16string_view AExpression, bool ACase, bool AsRegexp);
  ~TCSVRecordFilter();
  TCSVRecordFilter(const TCSVRecordFilter&) = delete;
  TCSVRecordFilter& operator=(const TCSVRecordFilter&) = delete;

  // Whether the row's cell at the column contains the substring or matches the
  // pattern anywhere. A column outside the row raises the list's index error,
  // except for an empty substring, which passes every row without reading it.
  // A malformed pattern or an exceeded match limit raises ERegexError; the
  // latter names the condition and the row, `ARowIndex` (zero-based), which
  // serves nothing else.
  bool Matched(const Record& ARow, int32_t ARowIndex);

  int32_t Column() const noexcept { return FColumn; }
  bool AsRegExp() const noexcept { return FAsRegExp; }
  // Substring mode only; false for a pattern, whose case lives in the pattern.
  bool CaseSensitive() const noexcept { return FCase; }
  // Substring mode only; empty for a pattern.
  const std::u16string& Substring() const noexcept { return FSubstring; }
  // Pattern mode only; null for a substring.
  const Regex* RegExObj() const noexcept { return FRegExObj.get(); }

 private:
  bool FAsRegExp;
  std::u16string FSubstring;
  bool FCase = false;
  std::unique_ptr<Regex> FRegExObj;
  int32_t FColumn;
  // Case-insensitive substring mode: the folded substring, and the buffer each
  // cell is folded into (it grows to the longest cell and then stays).
  std::u16string FFoldedSubstring;
  std::u16string FFoldedCell;
  std::u16string FWideCell;  // a one-byte cell widened
};

// An ordered list of owned conditions combined with AND (the default) or OR.
class TRecordFilterList {
 public:
  TRecordFilterList();
  ~TRecordFilterList();
  TRecordFilterList(const TRecordFilterList&) = delete;
  TRecordFilterList& operator=(const TRecordFilterList&) = delete;

  bool OrFilterMode() const noexcept { return FOrFilterMode; }
  void SetOrFilterMode(bool value) noexcept { FOrFilterMode = value; }

  // Appends a condition built from the four arguments of TCSVRecordFilter's
  // constructor (the column counted from 0).
  void AddFilter(int32_t AColumn, std::u16string_view AExpression, bool ACase, bool AsRegexp);
  // Appends the condition of one stored line (the column counted from 1). A
  // column field that is not an integer raises the conversion error and adds
  // nothing.
  void AddFilter(std::u16string_view ACondParams);

  // Whether the row passes: every condition (AND) or at least one (OR),
  // evaluated in order up to the deciding one. No conditions: true. Errors of
  // an evaluated condition leave as they are.
  // `ARowIndex`, the row's zero-based index, only names the row in an error.
  bool CheckFilters(const Record& ARow, int32_t ARowIndex);

  // Removes every condition; the mode stays.
  void ClearFilters() noexcept;

  int32_t Count() const noexcept { return static_cast<int32_t>(FFilterList.size()); }
  // The condition at a zero-based index; outside the list, the index error.
  const TCSVRecordFilter& Filter(int32_t index) const;

 private:
  std::vector<std::unique_ptr<TCSVRecordFilter>> FFilterList;
  bool FOrFilterMode = false;
};

}  // namespace qm
