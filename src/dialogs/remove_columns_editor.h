// The "CSV Remove Columns" dialog: the numbers of the columns to remove.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "dialogs/table_source_pages.h"

namespace qm {

enum class RemoveColumnsControl : uint8_t { ColumnsLabel, Columns };

class RemoveColumnsEditor {
 public:
  static constexpr std::u16string_view kCaption = u"CSV Remove Columns";
  static constexpr std::u16string_view kColumnsLabel = u"One or more column numbers (from 1, comma separated):";
  static constexpr std::u16string_view kColumnsHint = u"Column numbers start from 1";
  using Control = SourcedControl<RemoveColumnsControl>;
  static int32_t PageOf(const Control& control) { return SourcedPage(control); }

  void Load(const TQMParamParser& block);
  // Clears the block and writes `removecolumns` as typed, then the source and
  // format keys.
  void Save(TQMParamParser& block) const;
  // The list must not be blank (its content is not checked), then the pages.
  CheckResult<Control> Check() const;

  std::u16string columns;
  TableSourcePages pages;
};

}  // namespace qm
