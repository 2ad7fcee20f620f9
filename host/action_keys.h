// The parameter keys each action reads, with their types, defaults and
// meanings: what `qmhost keys` prints and what the task check compares a
// step's lines with. The plug-in's actions and keys are its own declarations
// (core/action_catalogue.h); the host built-ins are listed the same way.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/step_keys.h"

namespace qmhost {

// An action's key as the plug-in declares it (core/step_keys.h); the host
// built-ins' keys are declared the same way.
using qm::keys::KeyIndex;
using qm::keys::StepKey;
using qm::keys::Values;

// The keys of qmhost's own steps, declared once: the runner reads them
// through these, and `keys` and the task check list them.
namespace builtin {
extern const StepKey kPrintText;
extern const StepKey kSetVariableName;
extern const StepKey kSetVariableValue;
extern const StepKey kAddNumberName;
extern const StepKey kAddNumberValue;
extern const StepKey kShowFileName;
extern const StepKey kShowTableRows;
}  // namespace builtin

struct ActionKeys {
  std::string id;
  std::string summary;
  std::vector<const StepKey*> keys;
  bool builtin = false;  // a step qmhost runs itself
};

// Every action of the plug-in, then the host built-ins, in catalogue order.
const std::vector<ActionKeys>& AllActionKeys();
// The entry of an action or built-in ID (exact case), or null.
const ActionKeys* FindActionKeys(std::string_view id);
// True when the action reads a line with this name (ASCII case folded, as
// the plug-in compares names).
bool ReadsKey(const ActionKeys& action, std::string_view key);
// The entry of the key an action reads under this name, or null.
const StepKey* FindKey(const ActionKeys& action, std::string_view key);
// Empty when the value (as the step holds it, or expanded) fits the key;
// otherwise what is allowed, as "allowed are 0 and 1 (MEANING)". An empty
// value always fits: it reads as the default.
std::string ValueProblem(const StepKey& key, std::u16string_view value);
// How a key is written in listings: the name, then XXXXXXXX or N for the
// index of an indexed key.
std::string KeyPattern(const StepKey& key);
// The key's type as listings show it: integer, text or boolean.
std::string_view TypeName(const StepKey& key);

}  // namespace qmhost
