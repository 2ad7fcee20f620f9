// The plug-in's thirteen actions in catalogue order, declared once: the
// position is the index the host stores with each step and dispatches on.
// The plug-in's catalogue, its executors and editors by index, and qmhost's
// keys table all follow this list.
//
//   ACTION(Ident, "ACTION_ID", "catalogue name", kind, "what qmhost adds to the name", key groups...)
//
// The key groups are those of step_keys.h, the action's own first, in the
// order `qmhost keys` lists them; every action also reads the produced
// variables key, listed last.
#pragma once

#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>

#include "core/step_keys.h"

namespace qm {

#define QMCSV_CATALOGUE(ACTION)                                                                                    \
  ACTION(OpenData, "A_CSV_OPEN", "CSV Open Data", Simple, "reads a table from a file or typed text", kSourceKeys,  \
         kFormatKeys)                                                                                              \
  ACTION(DataInformation, "A_CSV_INFO", "CSV Get Data Information", Simple, "the record and column counts",        \
         kInformationKeys, kSourceKeys, kFormatKeys)                                                               \
  ACTION(AddColumn, "A_CSV_ADDCOLUMN", "CSV Add Column", Simple, "", kAddColumnKeys, kSourceKeys, kFormatKeys)     \
  ACTION(RemoveColumns, "A_CSV_REMOVECOLUMN", "CSV Remove Column", Simple, "", kRemoveColumnsKeys, kSourceKeys,    \
         kFormatKeys)                                                                                              \
  ACTION(SortByColumn, "A_CSV_SORT", "CSV Sort by Column", Simple, "", kSortKeys, kSourceKeys, kFormatKeys)        \
  ACTION(MoveColumn, "A_CSV_MOVECOLUMN", "CSV Move Column", Simple, "", kMoveColumnKeys, kSourceKeys, kFormatKeys) \
  ACTION(ReadCells, "A_CSV_READCELLS", "CSV Read Cells", Simple, "cells into variables", kCellKeys, kSourceKeys,   \
         kFormatKeys)                                                                                              \
  ACTION(WriteCells, "A_CSV_WRITECELLS", "CSV Write Cells", Simple, "values into cells", kCellKeys, kSourceKeys,   \
         kFormatKeys)                                                                                              \
  ACTION(MergeData, "A_CSV_MERGE", "CSV Merge Data", Simple, "appends a second table's records", kMergeKeys,       \
         kSourceKeys, kFormatKeys)                                                                                 \
  ACTION(FilterData, "A_CSV_FILTER", "CSV Filter Data", Simple, "deletes records by conditions", kFilterKeys,      \
         kConditionKeys, kSourceKeys, kFormatKeys)                                                                 \
  ACTION(DataLoop, "A_CSV_LOOP", "CSV Data Loop", BeginLoop, "runs the steps up to end-loop once per record",      \
         kLoopKeys, kConditionKeys, kSourceKeys, kFormatKeys)                                                      \
  ACTION(RemoveDuplicates, "A_CSV_REMOVEDUPL", "CSV Remove Duplicates", Simple, "", kDuplicatesKeys, kSourceKeys,  \
         kFormatKeys)                                                                                              \
  ACTION(SaveData, "A_CSV_SAVE", "CSV Save Data", Simple, "the table to a variable or a file", kTargetKeys, kFormatKeys)

// The actions by catalogue position.
enum class Action : int32_t {
#define QMCSV_ACTION_ENUMERATOR(Ident, ...) Ident,
  QMCSV_CATALOGUE(QMCSV_ACTION_ENUMERATOR)
#undef QMCSV_ACTION_ENUMERATOR
};

// A plain step, or the begin of a loop (its following steps are indented).
enum class ActionKind : uint8_t { Simple, BeginLoop };

namespace keys {
// Each action's key groups, as k<Ident>Groups.
#define QMCSV_ACTION_GROUPS(Ident, id, name, kind, detail, ...) \
  inline constexpr KeyGroup k##Ident##Groups[] = {__VA_ARGS__, kProducedKeys};
QMCSV_CATALOGUE(QMCSV_ACTION_GROUPS)
#undef QMCSV_ACTION_GROUPS
}  // namespace keys

struct CatalogueAction {
  Action action;
  std::u16string_view id;
  std::string_view id8;
  std::u16string_view name;  // as the host shows it in its action list
  std::string_view name8;
  ActionKind kind;
  std::string_view detail;  // `qmhost keys` shows "name: detail" (or the name alone)
  std::span<const keys::KeyGroup> keys;
};

inline constexpr CatalogueAction kCatalogue[] = {
#define QMCSV_ACTION_ENTRY(Ident, id, name, kind, detail, ...) \
  {Action::Ident, u"" id, id, u"" name, name, ActionKind::kind, detail, keys::k##Ident##Groups},
    QMCSV_CATALOGUE(QMCSV_ACTION_ENTRY)
#undef QMCSV_ACTION_ENTRY
};

#undef QMCSV_CATALOGUE

inline constexpr int32_t kActionCount = static_cast<int32_t>(std::size(kCatalogue));

constexpr int32_t CatalogueIndex(Action action) { return static_cast<int32_t>(action); }

}  // namespace qm
