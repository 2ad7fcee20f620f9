// The "CSV Move Column" dialog: the column to move and where to.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "dialogs/table_source_pages.h"

namespace qm {

enum class MoveColumnControl : uint8_t { FromLabel, From, ToLabel, To };

class MoveColumnEditor {
 public:
  static constexpr std::u16string_view kCaption = u"CSV Move Column";
  static constexpr std::u16string_view kFromLabel = u"Column number (from 1): ";
  static constexpr std::u16string_view kToLabel = u"Move to:";
  using Control = SourcedControl<MoveColumnControl>;
  static int32_t PageOf(const Control& control) { return SourcedPage(control); }

  void Load(const TQMParamParser& block);
  // Clears the block and writes `frompos`, `topos` as typed, then the source
  // and format keys.
  void Save(TQMParamParser& block) const;
  // The column, then the target must not be blank (they may be variable
  // references, so not numbers), then the pages.
  CheckResult<Control> Check() const;

  std::u16string from;
  std::u16string to;
  TableSourcePages pages;
};

}  // namespace qm
