// The "CSV Sort by Column" dialog: the column, the direction, strings or
// numbers, and case sensitivity.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "dialogs/table_source_pages.h"

namespace qm {

enum class SortDirection : int32_t { Ascending, Descending };
enum class SortMode : int32_t { Strings, Numbers };

enum class SortControl : uint8_t {
  ColumnLabel,
  Column,
  DirectionLabel,
  Direction,
  ModeLabel,
  Mode,
  CaseSensitive,
};

class SortEditor {
 public:
  static constexpr std::u16string_view kCaption = u"CSV Sort by Column";
  static constexpr std::array<std::u16string_view, 4> kLabels = {u"Sort by column (from 1): ", u"Sort direction:",
                                                                 u"Sort mode: ", u"Case sensitive"};
  static constexpr std::array<std::u16string_view, 2> kDirectionItems = {u"Ascending", u"Descending"};
  static constexpr std::array<std::u16string_view, 2> kModeItems = {u"Sort as strings", u"Sort as numbers"};
  using Control = SourcedControl<SortControl>;
  static int32_t PageOf(const Control& control) { return SourcedPage(control); }

  void Load(const TQMParamParser& block);
  // Clears the block and writes `sortcolumn` as typed, `sortdirection`,
  // `sortmode`, `casesensitive`, then the source and format keys.
  void Save(TQMParamParser& block) const;
  // The column must not be blank (it is not checked as a number), then the
  // pages.
  CheckResult<Control> Check() const;
  // "Case sensitive" only when sorting as strings; disabled, it keeps (and
  // saves) its state.
  bool IsEnabled(SortControl control) const;

  std::u16string column;
  SortDirection direction = SortDirection::Ascending;
  SortMode mode = SortMode::Strings;
  bool caseSensitive = false;
  TableSourcePages pages;
};

}  // namespace qm
