#include "ui/editors.h"

namespace qm::ui {

// The dialogs need the Windows build.
EditorRoutine EditorForIndex(int32_t) { return nullptr; }

}  // namespace qm::ui
