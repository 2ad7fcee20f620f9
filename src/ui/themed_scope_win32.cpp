#include "ui/themed_scope_win32.h"

#include <commctrl.h>

namespace qm::ui {

namespace {

// One context per process, made on first use and kept until it exits.
HANDLE LibraryContext() {
  static const HANDLE context = [] {
    ACTCTXW request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    request.hModule = OwnModuleHandle();
    request.lpResourceName = MAKEINTRESOURCEW(2);  // ISOLATIONAWARE_MANIFEST_RESOURCE_ID
    return CreateActCtxW(&request);
  }();
  return context;
}

}  // namespace

HMODULE OwnModuleHandle() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&OwnModuleHandle), &module);
  return module;
}

ThemedScope::ThemedScope() {
  const HANDLE context = LibraryContext();
  if (context != INVALID_HANDLE_VALUE) active_ = ActivateActCtx(context, &cookie_) != FALSE;
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_STANDARD_CLASSES | ICC_TAB_CLASSES | ICC_UPDOWN_CLASS |
                                                     ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
  InitCommonControlsEx(&controls);
}

ThemedScope::~ThemedScope() {
  if (active_) DeactivateActCtx(0, cookie_);
}

}  // namespace qm::ui
