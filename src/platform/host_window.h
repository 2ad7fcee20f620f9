// Queries sent to the host's window. Only the Windows build can send them;
// elsewhere, or without a window, nothing is sent and callers keep defaults.
#pragma once

#include <cstdint>

namespace qm {

// True when the query was sent; `result` is then the host's answer.
bool QueryHostWindow(void* window, uint32_t message, uintptr_t wParam, intptr_t& result);

}  // namespace qm
