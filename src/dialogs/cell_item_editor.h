// The small dialog that adds or edits one entry of the Read and Write Cells
// list: a row, a column and a variable name (read) or an expression (write).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "dialogs/dialog_check.h"

namespace qm {

// One list entry, kept as typed: the numbers may hold variable references.
struct CellEntry {
  std::u16string row;
  std::u16string column;
  std::u16string value;  // read: the variable's name; write: the cell's expression
  bool operator==(const CellEntry&) const = default;
};

enum class CellItemControl : uint8_t { RowLabel, Row, ColumnLabel, Column, ValueLabel, Value };

class CellItemEditor {
 public:
  static constexpr std::u16string_view kRowLabel = u"Row number (from 1):";
  static constexpr std::u16string_view kColumnLabel = u"Column number (from 1):";

  // Add mode starts with empty fields.
  CellItemEditor(bool addMode, bool writeMode, CellEntry entry = {});

  std::u16string_view Caption() const { return addMode_ ? u"Add cell" : u"Edit cell"; }
  std::u16string_view ValueLabel() const { return writeMode_ ? u"Expression" : u"Variable name:"; }
  // The hint an empty value field shows; none for a variable name.
  std::u16string_view ValueHint() const { return writeMode_ ? u"Enter cell value" : u""; }
  bool AddMode() const { return addMode_; }

  // Row and column must not be blank; the value may be empty. A refusal only
  // beeps (the default beep): it carries no message.
  CheckResult<CellItemControl> Check() const;

  CellEntry entry;

 private:
  bool addMode_;
  bool writeMode_;
};

}  // namespace qm
