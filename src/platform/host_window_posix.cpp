#include "platform/host_window.h"

namespace qm {

bool QueryHostWindow(void*, uint32_t, uintptr_t, intptr_t&) { return false; }

}  // namespace qm
