// The "CSV Get Data Information" dialog: the variables that receive the
// record and column counts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/table_source_pages.h"

namespace qm {

enum class InformationControl : uint8_t { RecordCountLabel, RecordCountVar, ColumnCountLabel, ColumnCountVar };

class InformationEditor {
 public:
  static constexpr std::u16string_view kCaption = u"CSV Get Data Information";
  static constexpr std::u16string_view kRecordCountLabel = u"Save record count to variable:";
  static constexpr std::u16string_view kColumnCountLabel = u"Save column count to variable:";
  using Control = SourcedControl<InformationControl>;
  static int32_t PageOf(const Control& control) { return SourcedPage(control); }

  void Load(const TQMParamParser& block);
  // Clears the block and writes `recordcountvar`, `colcountvar` (as typed),
  // the source and format keys and both names as produced variables.
  void Save(TQMParamParser& block) const;
  // The names may be empty: only the pages are checked.
  CheckResult<Control> Check() const { return pages.Check<Control>(); }
  std::vector<std::u16string_view> ProducedVariables() const { return {recordCountVar, columnCountVar}; }

  std::u16string recordCountVar;
  std::u16string columnCountVar;
  TableSourcePages pages;
};

}  // namespace qm
