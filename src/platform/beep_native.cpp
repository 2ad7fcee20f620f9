// Native build: there are no dialogs to refuse a command, so nothing sounds.
#include "platform/beep.h"

namespace qm {

void SoundBeep(Beep) {}

}  // namespace qm
