// Every key the plug-in's actions read from a step's parameter block, each
// declared once: its name, type, default, the values it takes and what it
// means. The executors read the block through these declarations, the
// editors' models load and save it through them, and qmhost lists them
// (`qmhost keys`) and checks task files against them. Keys that several
// actions read form groups (source, format, target, conditions); the
// catalogue (action_catalogue.h) gives each action its groups.
//
// A group is a list of KEY(...) lines, each expanded twice below: into the
// named declaration k<Ident> and into the group's array. Adding a key is one
// line here, then its uses.
//
//   KEY(Ident, "name", index, type, "default", values, last, flags, "meaning")
//
// index: None, or the kind of index that follows the name in the block
// (Hex8, as line0000000A; Decimal, as row3). type: Integer, Text or Boolean,
// as qmhost shows it. default: the value an absent key reads as (an empty
// integer or boolean too).
// values: what the task check allows (Any, Boolean, Choice up to `last`,
// Count from 0, Position from 1). flags: kPlain, or those of KeyFlag.
// meaning: the text `qmhost keys` prints.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace qm::keys {

enum class KeyIndex : uint8_t { None, Hex8, Decimal };
enum class KeyType : uint8_t { Integer, Text, Boolean };
enum class Values : uint8_t { Any, Boolean, Choice, Count, Position };

enum KeyFlag : uint8_t {
  kPlain = 0,
  // {variables} in the value are expanded before it is read as a number, so
  // the task check tests a value with "{" only once the step runs.
  kExpanded = 1,
  // The value names a variable the step sets (the editor lists it in the
  // block's produced variables).
  kProduced = 2,
  // As kProduced in the action that reads cells into variables; in the one
  // that writes cells the value is what is written.
  kProducedWhenReading = 4,
};

struct StepKey {
  std::u16string_view name;  // as the block holds it; letter case is not significant
  std::string_view name8;    // the same, for qmhost's listings and task files
  KeyIndex index;
  KeyType type;
  std::u16string_view fallback;  // what an absent key reads as
  std::string_view fallback8;
  Values values;
  int32_t last;  // the highest choice of Values::Choice
  uint8_t flags;
  std::string_view meaning;

  // The default as a number, for the integer and boolean keys.
  constexpr int32_t IntegerFallback() const {
    int32_t n = 0;
    for (const char16_t c : fallback) {
      if (c < u'0' || c > u'9') return 0;
      n = n * 10 + (c - u'0');
    }
    return n;
  }
  constexpr bool BoolFallback() const { return IntegerFallback() != 0; }
  constexpr bool Expanded() const { return (flags & kExpanded) != 0; }
};

// The key of entry `index` of an indexed key: the name, then the index in 8
// upper-case hexadecimal digits (Hex8) or in decimal digits (Decimal).
std::u16string IndexedName(const StepKey& key, int32_t index);

// One StepKey from the fields of a KEY(...) line (the name and the default
// are written once and given as UTF-16 and as narrow text).
#define QMCSV_STEP_KEY(name, index, type, fallback, values, last, flags, meaning)                   \
  ::qm::keys::StepKey {                                                                             \
    u"" name, name, ::qm::keys::KeyIndex::index, ::qm::keys::KeyType::type, u"" fallback, fallback, \
        ::qm::keys::Values::values, last, static_cast<uint8_t>(flags), meaning                      \
  }

// Where the data comes from and how lines are skipped: every action that reads a table.
#define QMCSV_SOURCE_KEYS(KEY)                                                                                       \
  KEY(Source, "source", None, Integer, "0", Choice, 2, kPlain,                                                       \
      "0 the task's current table, 1 a file, 2 the text lines of the step")                                          \
  KEY(FileName, "filename", None, Text, "", Any, 0, kPlain, "the file to read; {variables} are expanded")            \
  KEY(Encoding, "encoding", None, Integer, "0", Choice, 5, kPlain,                                                   \
      "the file's encoding: 0 default (ANSI code page), 1 UTF-7, 2 UTF-8, 3 UTF-16 LE, 4 ASCII, 5 ANSI")             \
  KEY(SkipFirst, "skipfirst", None, Integer, "0", Count, 0, kPlain, "lines to drop at the start, before the header") \
  KEY(SkipEmpty, "skipempty", None, Boolean, "1", Boolean, 0, kPlain, "drop blank lines")                            \
  KEY(SkipComments, "skipcomments", None, Boolean, "0", Boolean, 0, kPlain, "drop lines starting with commentchars") \
  KEY(CommentChars, "commentchars", None, Text, "#", Any, 0, kPlain,                                                 \
      "the comment prefix; blank turns skipcomments off")                                                            \
  KEY(HeaderLine, "headerline", None, Boolean, "0", Boolean, 0, kPlain, "the first data line holds the field names") \
  KEY(LineCount, "linecount", None, Integer, "0", Count, 0, kPlain, "the number of text lines (source 2)")           \
  KEY(Line, "line", Hex8, Text, "", Any, 0, kPlain, "text line N (0-based, 8 hex digits); {variables} are expanded")

// How CSV text is split and joined.
#define QMCSV_FORMAT_KEYS(KEY)                                                                                   \
  KEY(Delimiter, "delimiter", None, Integer, "2", Choice, 4, kPlain,                                             \
      "0 comma, 1 colon, 2 semicolon, 3 tab, 4 otherchar")                                                       \
  KEY(OtherChar, "otherchar", None, Text, "", Any, 0, kPlain, "the delimiter for choice 4: its first character") \
  KEY(QuoteChar, "quotechar", None, Integer, "0", Choice, 2, kPlain, "0 double quote, 1 single quote, 2 none")   \
  KEY(StrictDelimiter, "strictdelimiter", None, Boolean, "1", Boolean, 0, kPlain,                                \
      "only the delimiter separates cells (blanks do not)")

// Where Save Data writes the table.
#define QMCSV_TARGET_KEYS(KEY)                                                                                        \
  KEY(SaveToVariable, "savetovariable", None, Boolean, "0", Boolean, 0, kPlain,                                       \
      "write the CSV text into a host variable")                                                                      \
  KEY(SaveVariable, "savevariable", None, Text, "", Any, 0, kProduced, "that variable's name")                        \
  KEY(SaveToFile, "savetofile", None, Boolean, "0", Boolean, 0, kPlain,                                               \
      "write the CSV text into a file (replaced if it exists)")                                                       \
  KEY(TargetFileName, "targetfilename", None, Text, "", Any, 0, kPlain, "that file's name; missing folders are made") \
  KEY(TargetEncoding, "targetencoding", None, Integer, "0", Choice, 5, kPlain,                                        \
      "the file's encoding, choices as for encoding")                                                                 \
  KEY(NotChangeFormat, "notchangeformat", None, Boolean, "1", Boolean, 0, kPlain,                                     \
      "keep the table's own format instead of the format keys")

// The record conditions of Filter Data and Data Loop.
#define QMCSV_CONDITION_KEYS(KEY)                                                                           \
  KEY(ConditionMode, "conditionmode", None, Boolean, "0", Boolean, 0, kPlain,                               \
      "0 every condition must be met (AND), 1 any one (OR)")                                                \
  KEY(ConditionsCount, "conditionscount", None, Integer, "0", Count, 0, kPlain, "the number of conditions") \
  KEY(Condition, "condition", Hex8, Text, "", Any, 0, kPlain,                                               \
      "condition N (0-based, 8 hex digits), as the condition editor stores it")

#define QMCSV_INFORMATION_KEYS(KEY)                                        \
  KEY(RecordCountVar, "recordcountvar", None, Text, "", Any, 0, kProduced, \
      "the variable that receives the record count; empty: none")          \
  KEY(ColCountVar, "colcountvar", None, Text, "", Any, 0, kProduced,       \
      "the variable that receives the column count; empty: none")

#define QMCSV_ADD_COLUMN_KEYS(KEY)                                                                              \
  KEY(ToTheEnd, "totheend", None, Boolean, "1", Boolean, 0, kPlain,                                             \
      "append after the last column; 0 inserts at position")                                                    \
  KEY(Position, "position", None, Text, "", Position, 0, kExpanded,                                             \
      "the column number (from 1) to insert at; {variables} are expanded")                                      \
  KEY(ColumnName, "columnname", None, Text, "New field", Any, 0, kPlain, "the new column's field name")         \
  KEY(FillMode, "fillmode", None, Integer, "0", Choice, 2, kPlain, "0 empty, 1 sequence number, 2 columnvalue") \
  KEY(ColumnValue, "columnvalue", None, Text, "", Any, 0, kPlain, "the value for fill mode 2")

#define QMCSV_REMOVE_COLUMNS_KEYS(KEY) \
  KEY(RemoveColumns, "removecolumns", None, Text, "", Any, 0, kPlain, "column numbers (from 1), separated by commas")

#define QMCSV_MOVE_COLUMN_KEYS(KEY)                                                                            \
  KEY(FromPos, "frompos", None, Text, "", Position, 0, kExpanded, "the number (from 1) of the column to move") \
  KEY(ToPos, "topos", None, Text, "", Position, 0, kExpanded, "the position (from 1) to move it to")

#define QMCSV_SORT_KEYS(KEY)                                                                               \
  KEY(SortColumn, "sortcolumn", None, Text, "", Position, 0, kExpanded,                                    \
      "the number (from 1) of the column to sort by")                                                      \
  KEY(SortDirection, "sortdirection", None, Boolean, "0", Boolean, 0, kPlain, "0 ascending, 1 descending") \
  KEY(SortMode, "sortmode", None, Boolean, "0", Boolean, 0, kPlain, "0 as text, 1 as numbers")             \
  KEY(SortCaseSensitive, "casesensitive", None, Boolean, "0", Boolean, 0, kPlain,                          \
      "text comparison tells upper from lower case")

// Read Cells and Write Cells: the cells, numbered from 0.
#define QMCSV_CELL_KEYS(KEY)                                                               \
  KEY(CellCount, "cellcount", None, Integer, "0", Count, 0, kPlain, "the number of cells") \
  KEY(Row, "row", Decimal, Text, "0", Position, 0, kExpanded, "cell N's row (from 1)")     \
  KEY(Col, "col", Decimal, Text, "0", Position, 0, kExpanded, "cell N's column (from 1)")  \
  KEY(Val, "val", Decimal, Text, "", Any, 0, kProducedWhenReading,                         \
      "Read Cells: the variable that receives cell N; Write Cells: its new value")

#define QMCSV_MERGE_KEYS(KEY)                                               \
  KEY(AjustColumns, "ajustcolumns", None, Boolean, "0", Boolean, 0, kPlain, \
      "when the field counts differ: 0 fail, 1 adjust the added data")

#define QMCSV_FILTER_KEYS(KEY)                                            \
  KEY(ReverseMode, "reversemode", None, Boolean, "0", Boolean, 0, kPlain, \
      "0 delete the rows that do not pass, 1 those that pass")

#define QMCSV_LOOP_KEYS(KEY)                                                                                         \
  KEY(RowVarName, "rowvarname", None, Text, "", Any, 0, kProduced,                                                   \
      "the variable that receives the row number (from 1)")                                                          \
  KEY(LineVarName, "linevarname", None, Text, "", Any, 0, kProduced, "the variable that receives the row's content") \
  KEY(RowFormat, "Format", None, Boolean, "0", Boolean, 0, kPlain, "the row's content: 0 a CSV line, 1 a JSON array")

#define QMCSV_DUPLICATES_KEYS(KEY)                                                      \
  KEY(DuplicatesCaseSensitive, "casesensitive", None, Boolean, "0", Boolean, 0, kPlain, \
      "rows that differ in letter case only are different")                             \
  KEY(VarName, "varname", None, Text, "", Any, 0, kProduced, "the variable that receives the number of rows removed")

// The host's own key, written by every editor: the variables the step sets.
#define QMCSV_PRODUCED_KEYS(KEY)                                                   \
  KEY(VariablesProduced, "_qm_variables_produced", None, Text, "", Any, 0, kPlain, \
      "the variables the step sets (written by the editor)")

// A group's keys, in the order `qmhost keys` lists them.
using KeyGroup = std::span<const StepKey* const>;

#define QMCSV_DECLARE_KEY(Ident, name, index, type, fallback, values, last, flags, meaning) \
  inline constexpr StepKey k##Ident = QMCSV_STEP_KEY(name, index, type, fallback, values, last, flags, meaning);
#define QMCSV_KEY_ADDRESS(Ident, ...) &k##Ident,
#define QMCSV_KEY_GROUP(group, LIST) \
  LIST(QMCSV_DECLARE_KEY)            \
  inline constexpr const StepKey* group[] = {LIST(QMCSV_KEY_ADDRESS)};

QMCSV_KEY_GROUP(kSourceKeys, QMCSV_SOURCE_KEYS)
QMCSV_KEY_GROUP(kFormatKeys, QMCSV_FORMAT_KEYS)
QMCSV_KEY_GROUP(kTargetKeys, QMCSV_TARGET_KEYS)
QMCSV_KEY_GROUP(kConditionKeys, QMCSV_CONDITION_KEYS)
QMCSV_KEY_GROUP(kInformationKeys, QMCSV_INFORMATION_KEYS)
QMCSV_KEY_GROUP(kAddColumnKeys, QMCSV_ADD_COLUMN_KEYS)
QMCSV_KEY_GROUP(kRemoveColumnsKeys, QMCSV_REMOVE_COLUMNS_KEYS)
QMCSV_KEY_GROUP(kMoveColumnKeys, QMCSV_MOVE_COLUMN_KEYS)
QMCSV_KEY_GROUP(kSortKeys, QMCSV_SORT_KEYS)
QMCSV_KEY_GROUP(kCellKeys, QMCSV_CELL_KEYS)
QMCSV_KEY_GROUP(kMergeKeys, QMCSV_MERGE_KEYS)
QMCSV_KEY_GROUP(kFilterKeys, QMCSV_FILTER_KEYS)
QMCSV_KEY_GROUP(kLoopKeys, QMCSV_LOOP_KEYS)
QMCSV_KEY_GROUP(kDuplicatesKeys, QMCSV_DUPLICATES_KEYS)
QMCSV_KEY_GROUP(kProducedKeys, QMCSV_PRODUCED_KEYS)

#undef QMCSV_KEY_GROUP
#undef QMCSV_KEY_ADDRESS
#undef QMCSV_DECLARE_KEY
#undef QMCSV_SOURCE_KEYS
#undef QMCSV_FORMAT_KEYS
#undef QMCSV_TARGET_KEYS
#undef QMCSV_CONDITION_KEYS
#undef QMCSV_INFORMATION_KEYS
#undef QMCSV_ADD_COLUMN_KEYS
#undef QMCSV_REMOVE_COLUMNS_KEYS
#undef QMCSV_MOVE_COLUMN_KEYS
#undef QMCSV_SORT_KEYS
#undef QMCSV_CELL_KEYS
#undef QMCSV_MERGE_KEYS
#undef QMCSV_FILTER_KEYS
#undef QMCSV_LOOP_KEYS
#undef QMCSV_DUPLICATES_KEYS
#undef QMCSV_PRODUCED_KEYS

}  // namespace qm::keys
