#include "action_keys.h"

#include <cctype>
#include <cstdint>
#include <iterator>
#include <span>

#include "core/action_catalogue.h"
#include "core/convert.h"

namespace qmhost {

using qm::keys::kExpanded;
using qm::keys::kPlain;

// The built-ins' keys, declared as the plug-in declares its own.
namespace builtin {
const StepKey kPrintText =
    QMCSV_STEP_KEY("text", None, Text, "", Any, 0, kPlain, "the line to print; {variables} are expanded");
const StepKey kSetVariableName =
    QMCSV_STEP_KEY("name", None, Text, "", Any, 0, kPlain, "the variable's name; {variables} are expanded");
const StepKey kSetVariableValue =
    QMCSV_STEP_KEY("value", None, Text, "", Any, 0, kPlain, "its value; {variables} are expanded");
const StepKey kAddNumberName =
    QMCSV_STEP_KEY("name", None, Text, "", Any, 0, kPlain, "the variable to add to (absent: 0)");
const StepKey kAddNumberValue = QMCSV_STEP_KEY("value", None, Text, "", Any, 0, kPlain,
                                               "the number to add, with \".\" or \",\" before the fraction");
const StepKey kShowFileName =
    QMCSV_STEP_KEY("name", None, Text, "", Any, 0, kPlain, "the file whose bytes are printed");
const StepKey kShowTableRows = QMCSV_STEP_KEY("rows", None, Integer, "20", Count, 0, kExpanded,
                                              "the number of records to show; {variables} are expanded");
}  // namespace builtin

namespace {

// Each built-in's keys, in the order `keys` lists them.
const StepKey* const kPrint[] = {&builtin::kPrintText};
const StepKey* const kSetVariable[] = {&builtin::kSetVariableName, &builtin::kSetVariableValue};
const StepKey* const kAddNumber[] = {&builtin::kAddNumberName, &builtin::kAddNumberValue};
const StepKey* const kShowFile[] = {&builtin::kShowFileName};
const StepKey* const kShowTable[] = {&builtin::kShowTableRows};

template <size_t N>
std::vector<const StepKey*> Keys(const StepKey* const (&keys)[N]) {
  return std::vector<const StepKey*>(std::begin(keys), std::end(keys));
}

// A plug-in action's keys: its groups, one after the other.
std::vector<const StepKey*> Keys(std::span<const qm::keys::KeyGroup> groups) {
  std::vector<const StepKey*> list;
  for (const auto group : groups) list.insert(list.end(), group.begin(), group.end());
  return list;
}

char Fold(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

bool SameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (Fold(a[i]) != Fold(b[i])) return false;
  }
  return true;
}

bool Matches(const StepKey& info, std::string_view key) {
  const std::string_view name = info.name8;
  if (info.index == KeyIndex::None) return SameName(name, key);
  if (key.size() <= name.size() || !SameName(name, key.substr(0, name.size()))) return false;
  const std::string_view suffix = key.substr(name.size());
  for (const char c : suffix) {
    if (info.index == KeyIndex::Hex8 ? !std::isxdigit(static_cast<unsigned char>(c))
                                     : !std::isdigit(static_cast<unsigned char>(c))) {
      return false;
    }
  }
  return info.index == KeyIndex::Decimal || suffix.size() == 8;
}

}  // namespace

const std::vector<ActionKeys>& AllActionKeys() {
  static const std::vector<ActionKeys> all = [] {
    std::vector<ActionKeys> list;
    for (const qm::CatalogueAction& action : qm::kCatalogue) {
      std::string summary(action.name8);
      if (!action.detail.empty()) summary += ": " + std::string(action.detail);
      list.push_back({std::string(action.id8), summary, Keys(action.keys)});
    }
    const ActionKeys builtins[] = {
        {"print", "host: prints a line", Keys(kPrint), true},
        {"set-variable", "host: sets a host variable", Keys(kSetVariable), true},
        {"add-number", "host: adds a decimal number to a variable", Keys(kAddNumber), true},
        {"show-file", "host: prints a file's bytes", Keys(kShowFile), true},
        {"show-table", "host: prints the task's first records, aligned, without changing the table", Keys(kShowTable),
         true},
        {"end-loop", "host: back to the loop's begin step", {}, true},
        {"break-loop", "host: asks the loop to stop", {}, true},
    };
    list.insert(list.end(), std::begin(builtins), std::end(builtins));
    return list;
  }();
  return all;
}

const ActionKeys* FindActionKeys(std::string_view id) {
  for (const auto& action : AllActionKeys()) {
    if (id == action.id) return &action;
  }
  return nullptr;
}

bool ReadsKey(const ActionKeys& action, std::string_view key) { return FindKey(action, key) != nullptr; }

const StepKey* FindKey(const ActionKeys& action, std::string_view key) {
  for (const StepKey* info : action.keys) {
    if (Matches(*info, key)) return info;
  }
  return nullptr;
}

std::string ValueProblem(const StepKey& key, std::u16string_view value) {
  if (key.values == Values::Any || value.empty()) return {};
  // Read as the plug-in reads integers and booleans.
  int32_t n = 0;
  const bool number = qm::TryStrToInt(value, n);
  std::string allowed;
  switch (key.values) {
    case Values::Boolean:
      if (number && (n == 0 || n == 1)) return {};
      allowed = "allowed are 0 and 1";
      break;
    case Values::Choice:
      if (number && n >= 0 && n <= key.last) return {};
      allowed = "allowed are the choices 0 to " + std::to_string(key.last);
      break;
    case Values::Count:
      if (number && n >= 0) return {};
      allowed = "allowed is a whole number from 0";
      break;
    case Values::Position:
      if (number && n >= 1) return {};
      allowed = "allowed is a whole number from 1";
      break;
    case Values::Any: break;
  }
  return allowed + " (" + std::string(key.meaning) + ")";
}

std::string KeyPattern(const StepKey& key) {
  switch (key.index) {
    case KeyIndex::Hex8: return std::string(key.name8) + "XXXXXXXX";
    case KeyIndex::Decimal: return std::string(key.name8) + "N";
    case KeyIndex::None: break;
  }
  return std::string(key.name8);
}

std::string_view TypeName(const StepKey& key) {
  switch (key.type) {
    case qm::keys::KeyType::Integer: return "integer";
    case qm::keys::KeyType::Boolean: return "boolean";
    case qm::keys::KeyType::Text: break;
  }
  return "text";
}

}  // namespace qmhost
