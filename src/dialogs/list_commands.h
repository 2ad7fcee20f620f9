// The commands of a dialog's entry list (its buttons, context menu entries
// and shortcuts), and when one is refused.
#pragma once

#include <cstdint>
#include <optional>

#include "dialogs/dialog_check.h"

namespace qm {

enum class ListCommand : uint8_t { Add, Edit, Remove };

// Edit and Remove need a selected row (`selected` is -1 when none is, else a
// row of the `count` rows); refused, they only sound the default beep.
inline std::optional<Beep> ListRefusal(ListCommand command, int32_t selected, size_t count) {
  const bool isRow = selected >= 0 && static_cast<size_t>(selected) < count;
  if (command != ListCommand::Add && !isRow) return Beep::Default;
  return std::nullopt;
}

}  // namespace qm
