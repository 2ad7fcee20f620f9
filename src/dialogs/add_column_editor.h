// The "CSV Add Column" dialog: append or insert, the name, and how the new
// column is filled.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/step_keys.h"
#include "dialogs/table_source_pages.h"

namespace qm {

enum class AddColumnAction : int32_t { Append, Insert };
enum class ColumnFill : int32_t { Empty, Sequence, Static };

enum class AddColumnControl : uint8_t {
  ActionLabel,
  Action,
  PositionLabel,
  Position,
  NameLabel,
  Name,
  FillLabel,
  Fill,
  ValueLabel,
  Value,
};

class AddColumnEditor {
 public:
  static constexpr std::u16string_view kCaption = u"CSV Add Column";
  static constexpr std::u16string_view kDefaultName = keys::kColumnName.fallback;
  static constexpr std::array<std::u16string_view, 5> kLabels = {u"&Action:", u"Insert at (from 1):", u"Column name:",
                                                                 u"Fill mode: ", u"Column value:"};
  static constexpr std::array<std::u16string_view, 2> kActionItems = {u"Append column", u"Insert column"};
  static constexpr std::array<std::u16string_view, 3> kFillItems = {u"Empty value", u"Sequence number",
                                                                    u"Static value"};
  using Control = SourcedControl<AddColumnControl>;
  static int32_t PageOf(const Control& control) { return SourcedPage(control); }

  // `totheend` (default true), `position`, `columnname` (default "New
  // field"), `fillmode` (one that selects no item is 0), `columnvalue`.
  void Load(const TQMParamParser& block);
  // Clears the block and writes those five keys, then the source and format
  // keys.
  void Save(TQMParamParser& block) const;
  // The own fields are not checked: only the pages.
  CheckResult<Control> Check() const { return pages.Check<Control>(); }
  // The position only for "Insert column", the value only for "Static value".
  bool IsEnabled(AddColumnControl control) const;

  AddColumnAction action = AddColumnAction::Append;
  std::u16string position;
  std::u16string name{kDefaultName};
  ColumnFill fill = ColumnFill::Empty;
  std::u16string value;
  TableSourcePages pages;
};

}  // namespace qm
