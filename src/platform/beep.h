// The system's beep: what a refused command sounds.
#pragma once

#include <cstdint>

namespace qm {

// The beep a refused command sounds: a refused OK of a configuration dialog
// the exclamation (warning) beep, list commands and the cell editor the
// default beep.
enum class Beep : uint8_t { Exclamation, Default };

// Sounds the beep (Windows: MessageBeep with MB_ICONEXCLAMATION or MB_OK).
void SoundBeep(Beep beep);

}  // namespace qm
