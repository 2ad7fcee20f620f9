// The "CSV Remove Duplicates" dialog: case sensitivity and the variable that
// receives the number of deleted rows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/table_source_pages.h"

namespace qm {

enum class RemoveDuplicatesControl : uint8_t { CaseSensitive, VariableLabel, Variable };

class RemoveDuplicatesEditor {
 public:
  static constexpr std::u16string_view kCaption = u"CSV Remove Duplicates";
  static constexpr std::u16string_view kCaseSensitive = u"Case sensitive";
  static constexpr std::u16string_view kVariableLabel = u"Save number of deleted rows to variable:";
  using Control = SourcedControl<RemoveDuplicatesControl>;
  static int32_t PageOf(const Control& control) { return SourcedPage(control); }

  void Load(const TQMParamParser& block);
  // Clears the block and writes `casesensitive`, `varname` (trimmed), the
  // source and format keys and the name as produced variable.
  void Save(TQMParamParser& block) const;
  // The name may be empty: only the pages are checked.
  CheckResult<Control> Check() const { return pages.Check<Control>(); }
  std::vector<std::u16string_view> ProducedVariables() const { return {variable}; }

  bool caseSensitive = false;
  std::u16string variable;
  TableSourcePages pages;
};

}  // namespace qm
