// The "CSV Filter Data" dialog: which rows to delete (those that fail the
// conditions or those that pass them) and the conditions.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "dialogs/condition_list.h"
#include "dialogs/table_source_pages.h"

namespace qm {

enum class FilterDataControl : uint8_t { DeleteGroup, FilterGroup, Mode, List };

class FilterDataEditor {
 public:
  static constexpr std::u16string_view kCaption = u"CSV Filter Data";
  static constexpr std::u16string_view kDeleteGroup = u"Delete rows that ...";
  static constexpr std::array<std::u16string_view, 2> kDeleteItems = {u"...don't match filters", u"...match filters"};
  static constexpr std::u16string_view kFilterGroup = u"Filter options";
  static constexpr std::array<std::u16string_view, 3> kCommandCaptions = {u"Add ...", u"Edit ...", u"Remove"};
  using Control = SourcedControl<FilterDataControl>;
  static int32_t PageOf(const Control& control) { return SourcedPage(control); }

  void Load(const TQMParamParser& block);
  // Clears the block and writes `reversemode`, the conditions, the source
  // and format keys; no produced variables.
  void Save(TQMParamParser& block) const;
  // An empty list fails at the list; then the pages.
  CheckResult<Control> Check() const;

  // True: delete the rows that pass the conditions.
  bool deleteMatching = false;
  ConditionList conditions;
  TableSourcePages pages;
};

}  // namespace qm
