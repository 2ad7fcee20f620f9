// The "CSV Save Data" dialog: the target and, unless the table keeps its own
// format, the output format.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <variant>
#include <vector>

#include "dialogs/dialog_check.h"
#include "dialogs/format_frame.h"
#include "dialogs/target_frame.h"

namespace qm {

class TQMParamParser;

class SaveDataEditor {
 public:
  static constexpr std::u16string_view kCaption = u"CSV Save Data";
  static constexpr std::array<std::u16string_view, 2> kPageCaptions = {u"General", u"CSV Format"};
  // The target frame is on page 0, the format frame on page 1.
  using Control = std::variant<TargetControl, FormatControl>;
  static int32_t PageOf(const Control& control) { return static_cast<int32_t>(control.index()); }

  void Load(const TQMParamParser& block);
  // Clears the block and writes the target keys, the format keys and the
  // produced variable.
  void Save(TQMParamParser& block) const;
  // The target's check, then the format's, even while its page is hidden.
  CheckResult<Control> Check() const;

  // "CSV Format" shows only while "Keep original CSV format" is cleared.
  bool FormatPageVisible() const { return !target.keepFormat; }
  std::vector<std::u16string_view> ProducedVariables() const;

  TargetFrame target;
  FormatFrame format;
};

}  // namespace qm
