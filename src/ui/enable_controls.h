// Enabling and disabling the controls of a configuration dialog (Windows).
#pragma once

#include <cstdint>

namespace qm {

// Ties a label to the control it names: enabling the label enables the control.
void SetLabelFor(void* label, void* control);

// Sets a control's enabled state. A label passes the call to the control it
// names; edit fields, combo boxes, list boxes, tree views and list views also
// get their background: the window colour when enabled, the button face when
// not; any other window with children passes the call to each child in order.
void EnableControls(void* control, bool enabled);

// The system colour index (COLOR_WINDOW or COLOR_BTNFACE) a dialog paints an
// edit or list control with, as EnableControls last chose; COLOR_WINDOW when
// it never did.
int32_t ControlBackground(void* control);

}  // namespace qm
