#include "action_keys.h"

#include <cctype>
#include <cstdint>

#include "core/convert.h"

namespace qmhost {

namespace {

// Where the data comes from and how lines are skipped: every action that reads a table.
const KeyInfo kSource[] = {
    {"source", KeyIndex::None, "integer", "0", "0 the task's current table, 1 a file, 2 the text lines of the step", Values::Choice, 2},
    {"filename", KeyIndex::None, "text", "", "the file to read; {variables} are expanded"},
    {"encoding", KeyIndex::None, "integer", "0",
     "the file's encoding: 0 default (ANSI code page), 1 UTF-7, 2 UTF-8, 3 UTF-16 LE, 4 ASCII, 5 ANSI", Values::Choice, 5},
    {"skipfirst", KeyIndex::None, "integer", "0", "lines to drop at the start, before the header", Values::Count},
    {"skipempty", KeyIndex::None, "boolean", "1", "drop blank lines", Values::Boolean},
    {"skipcomments", KeyIndex::None, "boolean", "0", "drop lines starting with commentchars", Values::Boolean},
    {"commentchars", KeyIndex::None, "text", "#", "the comment prefix; blank turns skipcomments off"},
    {"headerline", KeyIndex::None, "boolean", "0", "the first data line holds the field names", Values::Boolean},
    {"linecount", KeyIndex::None, "integer", "0", "the number of text lines (source 2)", Values::Count},
    {"line", KeyIndex::Hex8, "text", "", "text line N (0-based, 8 hex digits); {variables} are expanded"},
};

// How CSV text is split and joined.
const KeyInfo kFormat[] = {
    {"delimiter", KeyIndex::None, "integer", "2", "0 comma, 1 colon, 2 semicolon, 3 tab, 4 otherchar", Values::Choice, 4},
    {"otherchar", KeyIndex::None, "text", "", "the delimiter for choice 4: its first character"},
    {"quotechar", KeyIndex::None, "integer", "0", "0 double quote, 1 single quote, 2 none", Values::Choice, 2},
    {"strictdelimiter", KeyIndex::None, "boolean", "1", "only the delimiter separates cells (blanks do not)", Values::Boolean},
};

const KeyInfo kTarget[] = {
    {"savetovariable", KeyIndex::None, "boolean", "0", "write the CSV text into a host variable", Values::Boolean},
    {"savevariable", KeyIndex::None, "text", "", "that variable's name"},
    {"savetofile", KeyIndex::None, "boolean", "0", "write the CSV text into a file (replaced if it exists)", Values::Boolean},
    {"targetfilename", KeyIndex::None, "text", "", "that file's name; missing folders are made"},
    {"targetencoding", KeyIndex::None, "integer", "0", "the file's encoding, choices as for encoding", Values::Choice, 5},
    {"notchangeformat", KeyIndex::None, "boolean", "1", "keep the table's own format instead of the format keys", Values::Boolean},
};

const KeyInfo kConditions[] = {
    {"conditionmode", KeyIndex::None, "boolean", "0", "0 every condition must be met (AND), 1 any one (OR)", Values::Boolean},
    {"conditionscount", KeyIndex::None, "integer", "0", "the number of conditions", Values::Count},
    {"condition", KeyIndex::Hex8, "text", "", "condition N (0-based, 8 hex digits), as the condition editor stores it"},
};

const KeyInfo kInfo[] = {
    {"recordcountvar", KeyIndex::None, "text", "", "the variable that receives the record count; empty: none"},
    {"colcountvar", KeyIndex::None, "text", "", "the variable that receives the column count; empty: none"},
};
const KeyInfo kAddColumn[] = {
    {"totheend", KeyIndex::None, "boolean", "1", "append after the last column; 0 inserts at position", Values::Boolean},
    {"position", KeyIndex::None, "text", "", "the column number (from 1) to insert at; {variables} are expanded", Values::Position, 0, true},
    {"columnname", KeyIndex::None, "text", "New field", "the new column's field name"},
    {"fillmode", KeyIndex::None, "integer", "0", "0 empty, 1 sequence number, 2 columnvalue", Values::Choice, 2},
    {"columnvalue", KeyIndex::None, "text", "", "the value for fill mode 2"},
};
const KeyInfo kRemoveColumns[] = {
    {"removecolumns", KeyIndex::None, "text", "", "column numbers (from 1), separated by commas"},
};
const KeyInfo kMoveColumn[] = {
    {"frompos", KeyIndex::None, "text", "", "the number (from 1) of the column to move", Values::Position, 0, true},
    {"topos", KeyIndex::None, "text", "", "the position (from 1) to move it to", Values::Position, 0, true},
};
const KeyInfo kSort[] = {
    {"sortcolumn", KeyIndex::None, "text", "", "the number (from 1) of the column to sort by", Values::Position, 0, true},
    {"sortdirection", KeyIndex::None, "boolean", "0", "0 ascending, 1 descending", Values::Boolean},
    {"sortmode", KeyIndex::None, "boolean", "0", "0 as text, 1 as numbers", Values::Boolean},
    {"casesensitive", KeyIndex::None, "boolean", "0", "text comparison tells upper from lower case", Values::Boolean},
};
const KeyInfo kCells[] = {
    {"cellcount", KeyIndex::None, "integer", "0", "the number of cells", Values::Count},
    {"row", KeyIndex::Decimal, "text", "0", "cell N's row (from 1)", Values::Position, 0, true},
    {"col", KeyIndex::Decimal, "text", "0", "cell N's column (from 1)", Values::Position, 0, true},
    {"val", KeyIndex::Decimal, "text", "", "Read Cells: the variable that receives cell N; Write Cells: its new value"},
};
const KeyInfo kMerge[] = {
    {"ajustcolumns", KeyIndex::None, "boolean", "0", "when the field counts differ: 0 fail, 1 adjust the added data", Values::Boolean},
};
const KeyInfo kFilter[] = {
    {"reversemode", KeyIndex::None, "boolean", "0", "0 delete the rows that do not pass, 1 those that pass", Values::Boolean},
};
const KeyInfo kLoop[] = {
    {"rowvarname", KeyIndex::None, "text", "", "the variable that receives the row number (from 1)"},
    {"linevarname", KeyIndex::None, "text", "", "the variable that receives the row's content"},
    {"Format", KeyIndex::None, "boolean", "0", "the row's content: 0 a CSV line, 1 a JSON array", Values::Boolean},
};
const KeyInfo kDuplicates[] = {
    {"casesensitive", KeyIndex::None, "boolean", "0", "rows that differ in letter case only are different", Values::Boolean},
    {"varname", KeyIndex::None, "text", "", "the variable that receives the number of rows removed"},
};
// Quillmate's own key, written by every editor: the variables the step sets.
const KeyInfo kProduced[] = {
    {"_qm_variables_produced", KeyIndex::None, "text", "", "the variables the step sets (written by the editor)"},
};

const KeyInfo kPrint[] = {{"text", KeyIndex::None, "text", "", "the line to print; {variables} are expanded"}};
const KeyInfo kSetVariable[] = {
    {"name", KeyIndex::None, "text", "", "the variable's name; {variables} are expanded"},
    {"value", KeyIndex::None, "text", "", "its value; {variables} are expanded"},
};
const KeyInfo kAddNumber[] = {
    {"name", KeyIndex::None, "text", "", "the variable to add to (absent: 0)"},
    {"value", KeyIndex::None, "text", "", "the number to add, with \".\" or \",\" before the fraction"},
};
const KeyInfo kShowFile[] = {{"name", KeyIndex::None, "text", "", "the file whose bytes are printed"}};
const KeyInfo kShowTable[] = {{"rows", KeyIndex::None, "integer", "20", "the number of records to show; {variables} are expanded",
                                 Values::Count, 0, true}};

template <size_t... N>
std::vector<const KeyInfo*> Keys(const KeyInfo (&... groups)[N]) {
  std::vector<const KeyInfo*> keys;
  auto add = [&](const KeyInfo* group, size_t n) {
    for (size_t i = 0; i < n; ++i) keys.push_back(group + i);
  };
  (add(groups, N), ...);
  return keys;
}

char Fold(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

bool SameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (Fold(a[i]) != Fold(b[i])) return false;
  }
  return true;
}

bool Matches(const KeyInfo& info, std::string_view key) {
  const std::string_view name = info.name;
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
  static const std::vector<ActionKeys> all = {
      {"A_CSV_OPEN", "CSV Open Data: reads a table from a file or typed text", Keys(kSource, kFormat, kProduced)},
      {"A_CSV_INFO", "CSV Get Data Information: the record and column counts",
       Keys(kInfo, kSource, kFormat, kProduced)},
      {"A_CSV_ADDCOLUMN", "CSV Add Column", Keys(kAddColumn, kSource, kFormat, kProduced)},
      {"A_CSV_REMOVECOLUMN", "CSV Remove Column", Keys(kRemoveColumns, kSource, kFormat, kProduced)},
      {"A_CSV_SORT", "CSV Sort by Column", Keys(kSort, kSource, kFormat, kProduced)},
      {"A_CSV_MOVECOLUMN", "CSV Move Column", Keys(kMoveColumn, kSource, kFormat, kProduced)},
      {"A_CSV_READCELLS", "CSV Read Cells: cells into variables", Keys(kCells, kSource, kFormat, kProduced)},
      {"A_CSV_WRITECELLS", "CSV Write Cells: values into cells", Keys(kCells, kSource, kFormat, kProduced)},
      {"A_CSV_MERGE", "CSV Merge Data: appends a second table's records", Keys(kMerge, kSource, kFormat, kProduced)},
      {"A_CSV_FILTER", "CSV Filter Data: deletes records by conditions",
       Keys(kFilter, kConditions, kSource, kFormat, kProduced)},
      {"A_CSV_LOOP", "CSV Data Loop: runs the steps up to end-loop once per record",
       Keys(kLoop, kConditions, kSource, kFormat, kProduced)},
      {"A_CSV_REMOVEDUPL", "CSV Remove Duplicates", Keys(kDuplicates, kSource, kFormat, kProduced)},
      {"A_CSV_SAVE", "CSV Save Data: the table to a variable or a file", Keys(kTarget, kFormat, kProduced)},
      {"print", "host: prints a line", Keys(kPrint), true},
      {"set-variable", "host: sets a host variable", Keys(kSetVariable), true},
      {"add-number", "host: adds a decimal number to a variable", Keys(kAddNumber), true},
      {"show-file", "host: prints a file's bytes", Keys(kShowFile), true},
      {"show-table", "host: prints the task's first records, aligned, without changing the table", Keys(kShowTable), true},
      {"end-loop", "host: back to the loop's begin step", {}, true},
      {"break-loop", "host: asks the loop to stop", {}, true},
  };
  return all;
}

const ActionKeys* FindActionKeys(std::string_view id) {
  for (const auto& action : AllActionKeys()) {
    if (id == action.id) return &action;
  }
  return nullptr;
}

bool ReadsKey(const ActionKeys& action, std::string_view key) { return FindKey(action, key) != nullptr; }

const KeyInfo* FindKey(const ActionKeys& action, std::string_view key) {
  for (const KeyInfo* info : action.keys) {
    if (Matches(*info, key)) return info;
  }
  return nullptr;
}

std::string ValueProblem(const KeyInfo& key, std::u16string_view value) {
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
  return allowed + " (" + key.meaning + ")";
}

std::string KeyPattern(const KeyInfo& key) {
  switch (key.index) {
    case KeyIndex::Hex8: return std::string(key.name) + "XXXXXXXX";
    case KeyIndex::Decimal: return std::string(key.name) + "N";
    case KeyIndex::None: break;
  }
  return key.name;
}

}  // namespace qmhost
