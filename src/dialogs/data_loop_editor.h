// The "CSV Data Loop" dialog: the variables that receive each visited row's
// number and content, the content's format, and the conditions a row must
// pass to be visited.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/condition_list.h"
#include "dialogs/table_source_pages.h"

namespace qm {

enum class DataLoopControl : uint8_t {
  RowNumberLabel,
  RowNumberVar,
  RowLabel,
  RowVar,
  FormatLabel,
  Format,
  FilterGroup,
  Mode,
  List,
};

class DataLoopEditor {
 public:
  static constexpr std::u16string_view kCaption = u"CSV Data Loop";
  static constexpr std::u16string_view kRowNumberLabel = u"Save row number to variable:";
  static constexpr std::u16string_view kRowLabel = u"Save current row to a variable:";
  static constexpr std::u16string_view kFormatLabel = u"Save format:";
  static constexpr std::array<std::u16string_view, 2> kFormatItems = {u"Standard comma-separated string",
                                                                      u"JSON array"};
  static constexpr std::u16string_view kFilterGroup = u"Filter Options";
  static constexpr std::array<std::u16string_view, 3> kCommandCaptions = {u"Add...", u"Edit...", u"Remove"};
  using Control = SourcedControl<DataLoopControl>;
  static int32_t PageOf(const Control& control) { return SourcedPage(control); }

  void Load(const TQMParamParser& block);
  // Clears the block and writes `rowvarname`, `linevarname` (as typed),
  // `Format`, the conditions, the source and format keys and both names as
  // produced variables.
  void Save(TQMParamParser& block) const;
  // Both names blank fails at the row number; then the pages. The
  // conditions are not checked: a bad one fails when the loop runs.
  CheckResult<Control> Check() const;
  std::vector<std::u16string_view> ProducedVariables() const { return {rowNumberVar, rowVar}; }

  std::u16string rowNumberVar;
  std::u16string rowVar;
  bool jsonFormat = false;
  ConditionList conditions;
  TableSourcePages pages;
};

}  // namespace qm
