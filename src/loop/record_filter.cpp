#include "loop/record_filter.h"

#include "core/case_fold.h"
#include "core/convert.h"
#include "core/errors.h"
#include "core/messages.h"

namespace qm {

TCSVRecordFilter::TCSVRecordFilter(int32_t AColNum, std::u16string_view AExpression, bool ACase, bool AsRegexp)
    : FAsRegExp(AsRegexp), FColumn(AColNum) {
  if (FAsRegExp) {
    // The pattern carries the case: caseless unless asked to be case-sensitive.
    FRegExObj = std::make_unique<Regex>(std::u16string(AExpression), !ACase);
  } else {
    FCase = ACase;
    FSubstring.assign(AExpression);
    if (!FCase) FoldCase(FSubstring, FFoldedSubstring);
  }
}

TCSVRecordFilter::~TCSVRecordFilter() = default;

bool TCSVRecordFilter::Matched(const Record& ARow, int32_t ARowIndex) {
  if (FAsRegExp) {
    const std::u16string_view cell = ARow.At(FColumn).Wide(FWideCell);
    // A malformed pattern reports as it always has, with the library's words.
    FRegExObj->Compile();
    try {
      return FRegExObj->Search(cell);
    } catch (const ERegexError& e) {
      // Too much work for this cell: say which condition it was.
      throw ERegexError(Format(msg::kRegexConditionFailed, {IntToStr(int64_t{FColumn} + 1), FRegExObj->Pattern(),
                                                            IntToStr(int64_t{ARowIndex} + 1), e.Message()}));
    }
  }
  if (FSubstring.empty()) return true;
  const std::u16string_view cell = ARow.At(FColumn).Wide(FWideCell);
  if (FCase) return cell.find(FSubstring) != std::u16string_view::npos;
  // Folding keeps the length, so a shorter cell cannot contain the substring.
  if (cell.size() < FFoldedSubstring.size()) return false;
  FoldCase(cell, FFoldedCell);
  return std::u16string_view(FFoldedCell).find(FFoldedSubstring) != std::u16string_view::npos;
}

TRecordFilterList::TRecordFilterList() = default;

TRecordFilterList::~TRecordFilterList() = default;

void TRecordFilterList::AddFilter(int32_t AColumn, std::u16string_view AExpression, bool ACase, bool AsRegexp) {
  FFilterList.push_back(std::make_unique<TCSVRecordFilter>(AColumn, AExpression, ACase, AsRegexp));
}

void TRecordFilterList::AddFilter(std::u16string_view ACondParams) {
  const ConditionFields fields = SplitCondition(ACondParams);
  // Stored columns count from 1. The subtraction wraps like the 32-bit
  // arithmetic it stands for; any such column is out of every row's range.
  const auto column = static_cast<int32_t>(static_cast<uint32_t>(StrToInt(fields.column)) - 1u);
  AddFilter(column, fields.expression, fields.caseSensitive, fields.regex);
}

bool TRecordFilterList::CheckFilters(const Record& ARow, int32_t ARowIndex) {
  // No conditions: every row passes, in either mode.
  if (FFilterList.empty()) return true;
  // AND stops at the first condition that fails, OR at the first that passes;
  // the conditions after it are not evaluated and so cannot raise.
  for (const auto& filter : FFilterList) {
    if (filter->Matched(ARow, ARowIndex) == FOrFilterMode) return FOrFilterMode;
  }
  return !FOrFilterMode;
}

void TRecordFilterList::ClearFilters() noexcept { FFilterList.clear(); }

const TCSVRecordFilter& TRecordFilterList::Filter(int32_t index) const {
  if (index < 0 || index >= Count()) RaiseListIndexError(index);
  return *FFilterList[static_cast<size_t>(index)];
}

}  // namespace qm
