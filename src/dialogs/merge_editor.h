// The "CSV Merge Data" dialog: the data to add (a file or a text), its
// format, and what to do when the numbers of columns differ.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <variant>

#include "dialogs/dialog_check.h"
#include "dialogs/format_frame.h"
#include "dialogs/source_frame.h"

namespace qm {

class TQMParamParser;

enum class ColumnMismatch : int32_t { RaiseError, AdjustColumns };
enum class MergeControl : uint8_t { Note, Mismatch };

class MergeEditor {
 public:
  static constexpr std::u16string_view kCaption = u"CSV Merge Data";
  static constexpr int32_t kHelpContext = 5100;
  static constexpr std::array<std::u16string_view, 3> kPageCaptions = {u"Data to add", u"Data Format", u"Advanced"};
  static constexpr std::u16string_view kNote = u"Adds data to an already opened CSV from another source";
  static constexpr std::u16string_view kMismatchCaption = u"If the number of columns is different ...";
  static constexpr std::array<std::u16string_view, 2> kMismatchItems = {u"Raise an error",
                                                                        u"Adjust the number of columns"};
  // The note and the source frame are on page 0, the format frame on page 1,
  // the column choice on page 2.
  using Control = std::variant<MergeControl, SourceControl, FormatControl>;
  static int32_t PageOf(const Control& control);

  void Load(const TQMParamParser& block);
  // Clears the block and writes `ajustcolumns`, the source keys, the format
  // keys.
  void Save(TQMParamParser& block) const;
  // The source's check, then the format's.
  CheckResult<Control> Check() const;

  ColumnMismatch mismatch = ColumnMismatch::RaiseError;
  SourceFrame source{true};
  FormatFrame format;
};

}  // namespace qm
