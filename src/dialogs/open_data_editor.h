// The "CSV Open Data" dialog: a source in open mode and its format.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <variant>

#include "dialogs/dialog_check.h"
#include "dialogs/format_frame.h"
#include "dialogs/source_frame.h"

namespace qm {

class TQMParamParser;

class OpenDataEditor {
 public:
  static constexpr std::u16string_view kCaption = u"CSV Open Data";
  static constexpr std::array<std::u16string_view, 2> kPageCaptions = {u"CSV data", u"Source format"};
  // The source frame is on page 0, the format frame on page 1.
  using Control = std::variant<SourceControl, FormatControl>;
  static int32_t PageOf(const Control& control) { return static_cast<int32_t>(control.index()); }

  void Load(const TQMParamParser& block);
  // Clears the block and writes the source keys, then the format keys.
  void Save(TQMParamParser& block) const;
  CheckResult<Control> Check() const;

  SourceFrame source{true};
  FormatFrame format;
};

}  // namespace qm
