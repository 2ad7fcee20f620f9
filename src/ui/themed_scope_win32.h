// Dialogs of this library get the common-controls 6 look: a DLL's manifest is
// not applied by itself, so each dialog is created inside an activation
// context made from the manifest resource the library carries.
#pragma once

#include <windows.h>

namespace qm::ui {

// Activates the library's own manifest for the scope's lifetime (a no-op
// where the resource or the context cannot be had: the dialog then has the
// classic look, but works).
class ThemedScope {
 public:
  ThemedScope();
  ~ThemedScope();
  ThemedScope(const ThemedScope&) = delete;
  ThemedScope& operator=(const ThemedScope&) = delete;

 private:
  ULONG_PTR cookie_ = 0;
  bool active_ = false;
};

// The module (DLL or program) this code is linked into.
HMODULE OwnModuleHandle();

}  // namespace qm::ui
