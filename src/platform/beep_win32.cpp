#include <windows.h>

#include "platform/beep.h"

namespace qm {

// The one call of MessageBeep in the library: a test that replaces the
// library's import of it hears every beep the dialogs sound.
void SoundBeep(Beep beep) { MessageBeep(beep == Beep::Exclamation ? MB_ICONEXCLAMATION : MB_OK); }

}  // namespace qm
