// The dialog that adds or edits one record condition.
#pragma once

#include <windows.h>

#include "dialogs/condition_editor.h"

namespace qm::ui {

// Runs the condition dialog on `model` over `owner`; true (and the model
// holds the fields as entered) when it closed with OK.
bool EditCondition(ConditionEditor& model, HWND owner, int scale);

}  // namespace qm::ui
