// What a dialog's OK check answers, and the rules every dialog shares: the
// check of a required text, and the produced-variables entry written on OK.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/beep.h"

namespace qm {

class TQMParamParser;

// A refused OK: the control at fault (the view switches to its tab page and
// shows the message as a balloon at its centre; an empty message shows none)
// and the beep to sound.
template <class ControlId>
struct CheckFailure {
  ControlId control;
  std::u16string_view message;
  Beep beep = Beep::Exclamation;
};

// No value: the check passed and the dialog may close.
template <class ControlId>
using CheckResult = std::optional<CheckFailure<ControlId>>;

template <class ControlId>
CheckResult<ControlId> Fail(ControlId control, std::u16string_view message, Beep beep = Beep::Exclamation) {
  return CheckFailure<ControlId>{control, message, beep};
}

// A frame's failure as a failure of the dialog that holds the frame.
template <class To, class From>
CheckResult<To> Widen(const CheckResult<From>& result) {
  if (!result) return std::nullopt;
  return CheckFailure<To>{To{result->control}, result->message, result->beep};
}

// A required text field: empty after trimming blanks and control characters.
bool IsBlank(std::u16string_view text);

// Writes `_qm_variables_produced` from the names of the dialog's variable
// fields, as typed (trimmed, one entry per name whatever its letter case); no
// name removes the key.
void WriteProducedVariables(TQMParamParser& block, const std::vector<std::u16string_view>& names);

}  // namespace qm
