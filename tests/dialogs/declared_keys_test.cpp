// Each action's editor model against the keys the catalogue declares for the
// action: it writes no other key, an empty block comes back as the declared
// defaults, a value given to every key comes back unchanged, and the
// produced variables are the values of the keys declared to name them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>

#include "boundary/param_parser.h"
#include "core/action_catalogue.h"
#include "core/convert.h"
#include "core/delimited_text.h"
#include "core/text_lines.h"
#include "core/utf.h"
#include "dialogs/add_column_editor.h"
#include "dialogs/cells_editor.h"
#include "dialogs/data_loop_editor.h"
#include "dialogs/filter_data_editor.h"
#include "dialogs/information_editor.h"
#include "dialogs/merge_editor.h"
#include "dialogs/move_column_editor.h"
#include "dialogs/open_data_editor.h"
#include "dialogs/remove_columns_editor.h"
#include "dialogs/remove_duplicates_editor.h"
#include "dialogs/save_data_editor.h"
#include "dialogs/sort_editor.h"

namespace qm {
namespace {

using keys::KeyIndex;
using keys::StepKey;

// The block the action's editor saves after loading `text`.
TQMParamParser Resave(Action action, const std::u16string& text) {
  const TQMParamParser in(text);
  TQMParamParser out;
  auto run = [&](auto editor) {
    editor.Load(in);
    editor.Save(out);
  };
  switch (action) {
    case Action::OpenData: run(OpenDataEditor()); break;
    case Action::DataInformation: run(InformationEditor()); break;
    case Action::AddColumn: run(AddColumnEditor()); break;
    case Action::RemoveColumns: run(RemoveColumnsEditor()); break;
    case Action::SortByColumn: run(SortEditor()); break;
    case Action::MoveColumn: run(MoveColumnEditor()); break;
    case Action::ReadCells: run(CellsEditor(false)); break;
    case Action::WriteCells: run(CellsEditor(true)); break;
    case Action::MergeData: run(MergeEditor()); break;
    case Action::FilterData: run(FilterDataEditor()); break;
    case Action::DataLoop: run(DataLoopEditor()); break;
    case Action::RemoveDuplicates: run(RemoveDuplicatesEditor()); break;
    case Action::SaveData: run(SaveDataEditor()); break;
  }
  return out;
}

std::vector<const StepKey*> KeysOf(const CatalogueAction& action) {
  std::vector<const StepKey*> list;
  for (const auto group : action.keys) list.insert(list.end(), group.begin(), group.end());
  return list;
}

// True when `name` is the key, or an entry of the indexed key.
bool Names(const StepKey& key, std::u16string_view name) {
  const std::string folded = Utf16ToUtf8(name);
  const std::string own(key.name8);
  auto same = [](std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return std::tolower(x) == std::tolower(y); });
  };
  if (key.index == KeyIndex::None) return same(folded, own);
  return folded.size() > own.size() && same(folded.substr(0, own.size()), own) &&
         folded.find_first_not_of("0123456789ABCDEFabcdef", own.size()) == std::string::npos;
}

// Every line of the block names a key the action reads.
void ExpectOnlyDeclaredKeys(const CatalogueAction& action, const TQMParamParser& block) {
  const auto declared = KeysOf(action);
  for (const auto& line : SplitLines(block.Text())) {
    const std::u16string name = line.substr(0, line.find(u'='));
    EXPECT_TRUE(std::any_of(declared.begin(), declared.end(), [&](const StepKey* k) { return Names(*k, name); }))
        << action.name8 << " writes " << Utf16ToUtf8(name);
  }
}

TEST(DeclaredKeys, AnEmptyBlockComesBackAsTheDeclaredDefaults) {
  for (const CatalogueAction& action : kCatalogue) {
    const TQMParamParser saved = Resave(action.action, u"");
    ExpectOnlyDeclaredKeys(action, saved);
    const bool openMode = action.action == Action::OpenData || action.action == Action::MergeData;
    for (const StepKey* key : KeysOf(action)) {
      // Open Data and Merge Data offer a file or a text, not the task's table.
      if (key->index != KeyIndex::None || (openMode && key == &keys::kSource)) continue;
      EXPECT_EQ(saved.GetString(*key), key->fallback) << action.name8 << " " << key->name8;
    }
  }
}

// A value for each key that is not its default: the last choice, the other
// flag, one entry of an indexed list, a variable name "p<key>" where the key
// names a produced variable.
std::u16string GivenValue(const StepKey& key) {
  if (key.flags & (keys::kProduced | keys::kProducedWhenReading)) return u"p" + std::u16string(key.name);
  if (&key == &keys::kCondition) return u"1,t,0,0";
  switch (key.values) {
    case keys::Values::Boolean: return key.BoolFallback() ? u"0" : u"1";
    case keys::Values::Choice: return IntToStr(key.last);
    case keys::Values::Count: return u"1";
    case keys::Values::Position: return u"2";
    case keys::Values::Any: break;
  }
  return u"t";
}

TEST(DeclaredKeys, EveryKeyKeepsItsValueAndProducedOnesAreListed) {
  for (const CatalogueAction& action : kCatalogue) {
    TQMParamParser given;
    std::set<std::u16string> produced;
    for (const StepKey* key : KeysOf(action)) {
      if (key == &keys::kVariablesProduced) continue;  // the editor's own
      const std::u16string value = GivenValue(*key);
      given.SetString(keys::IndexedName(*key, 0), value);
      const bool reads = action.action != Action::WriteCells;
      if ((key->flags & keys::kProduced) || (reads && (key->flags & keys::kProducedWhenReading)))
        produced.insert(value);
    }
    const TQMParamParser saved = Resave(action.action, given.Text());
    ExpectOnlyDeclaredKeys(action, saved);
    for (const auto& line : SplitLines(given.Text())) {
      const size_t eq = line.find(u'=');
      EXPECT_EQ(saved.GetString(line.substr(0, eq)), line.substr(eq + 1)) << action.name8 << " " << Utf16ToUtf8(line);
    }
    const std::u16string list = saved.GetString(keys::kVariablesProduced);
    const auto names = list.empty() ? std::vector<std::u16string>() : SplitDelimited(list, kCommaText);
    EXPECT_EQ(std::set<std::u16string>(names.begin(), names.end()), produced) << action.name8;
  }
}

}  // namespace
}  // namespace qm
