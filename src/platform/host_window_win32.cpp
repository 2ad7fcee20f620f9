#include <windows.h>

#include "platform/host_window.h"

namespace qm {

bool QueryHostWindow(void* window, uint32_t message, uintptr_t wParam, intptr_t& result) {
  if (!window) return false;
  result = static_cast<intptr_t>(SendMessageW(static_cast<HWND>(window), message, wParam, 0));
  return true;
}

}  // namespace qm
