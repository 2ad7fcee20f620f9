// Hears the beeps the code under test sounds: its module's import of
// MessageBeep, which the platform seam (platform/beep_win32.cpp) alone calls,
// is pointed at a recorder that notes the beep and sounds it.
#pragma once

#include <windows.h>

namespace qm::test {

// Records the beeps `module` (the plug-in's DLL, or this program) sounds;
// false when it imports no MessageBeep.
bool RecordBeeps(HMODULE module);
// The last beep sounded since ForgetBeeps: MB_ICONEXCLAMATION, MB_OK, or -1.
int LastBeep();
void ForgetBeeps();

}  // namespace qm::test
