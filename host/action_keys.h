// The parameter keys each action reads, with their types, defaults and
// meanings: what `qmhost keys` prints and what the task check compares a
// step's lines with. Host built-ins are listed the same way.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qmhost {

// How a key's name is matched: as it stands, or as a prefix followed by an
// index (8 hexadecimal digits, as "line0000000A", or decimal, as "row3").
enum class KeyIndex { None, Hex8, Decimal };

// What a key's value may be, as the task check tests it: any text, 0 or 1, a
// choice index from 0 to `last`, a count from 0, or a number from 1.
enum class Values { Any, Boolean, Choice, Count, Position };

struct KeyInfo {
  const char* name;
  KeyIndex index;
  const char* type;
  const char* fallback;  // the value when the key is absent
  const char* meaning;
  Values values = Values::Any;
  int last = 0;           // the highest choice index
  bool expanded = false;  // {variables} in the value are expanded before it is read
};

struct ActionKeys {
  const char* id;
  const char* summary;
  std::vector<const KeyInfo*> keys;
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
const KeyInfo* FindKey(const ActionKeys& action, std::string_view key);
// Empty when the value (as the step holds it, or expanded) fits the key;
// otherwise what is allowed, as "allowed are 0 and 1 (MEANING)". An empty
// value always fits: it reads as the default.
std::string ValueProblem(const KeyInfo& key, std::u16string_view value);
// How a key is written in listings: "line" + "XXXXXXXX" for indexed keys.
std::string KeyPattern(const KeyInfo& key);

}  // namespace qmhost
