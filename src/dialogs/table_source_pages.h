// The "Source" and "Source Format" pages that every dialog of an action
// reading the task's table shares, after its own "General" page.
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

// A control of such a dialog: one of its own (page 0), of the source frame
// (page 1) or of the format frame (page 2).
template <class Own>
using SourcedControl = std::variant<Own, SourceControl, FormatControl>;

template <class Own>
int32_t SourcedPage(const SourcedControl<Own>& control) {
  return static_cast<int32_t>(control.index());
}

class TableSourcePages {
 public:
  static constexpr std::array<std::u16string_view, 3> kPageCaptions = {u"General", u"Source", u"Source Format"};

  // The source keys, then the format keys.
  void Load(const TQMParamParser& block);
  void Save(TQMParamParser& block) const;

  // "Source Format" shows only for a file or a text.
  bool FormatPageVisible() const { return source.source != CsvSource::PreviousAction; }

  // The source frame's check; with the task's table nothing more, otherwise
  // the format frame's check.
  template <class Control>
  CheckResult<Control> Check() const {
    if (auto failure = source.Check()) return Widen<Control>(failure);
    if (source.source == CsvSource::PreviousAction) return std::nullopt;
    return Widen<Control>(format.Check());
  }

  SourceFrame source;
  FormatFrame format;
};

}  // namespace qm
