// The CSV format frame: delimiter, quote character and strict delimiter, as
// the dialogs that read or write CSV text embed it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "dialogs/dialog_check.h"

namespace qm {

class TQMParamParser;

enum class DelimiterChoice : int32_t { Comma, Colon, Semicolon, Tab, Custom };
enum class QuoteChoice : int32_t { DoubleQuote, SingleQuote, None };

enum class FormatControl : uint8_t {
  DelimiterLabel,
  Delimiter,
  OtherCharLabel,
  OtherChar,
  QuoteCharLabel,
  QuoteChar,
  Strict,
  ResetStandard,
  ResetExcel,
};

class FormatFrame {
 public:
  static constexpr std::array<std::u16string_view, 5> kDelimiterItems = {u"Comma - ,", u"Colon - :", u"Semicolon - ;",
                                                                         u"Tab Character", u"Custom Character"};
  static constexpr std::u16string_view kDelimiterLabel = u"Delimiter:";
  static constexpr std::u16string_view kOtherCharLabel = u"Character:";
  static constexpr std::u16string_view kQuoteCharLabel = u"Quote character:";
  static constexpr std::u16string_view kStrict = u"Strict delimiter (space is not a delimiter)";
  static constexpr std::u16string_view kResetStandard = u"Reset to standard format";
  static constexpr std::u16string_view kResetExcel = u"Reset to Excel format";
  static constexpr std::array<std::u16string_view, 3> kQuoteItems = {u"Double quote - \"", u"Single quote - '",
                                                                     u"None"};

  // `delimiter` (default 2; an index that selects no item is 2), `otherchar`,
  // `quotechar` (default 0; likewise 0), `strictdelimiter` (default true);
  // then the enabled states.
  void Load(const TQMParamParser& block);
  // The four keys: the choice indexes, the custom character as typed, the flag.
  void Save(TQMParamParser& block) const;

  // The delimiter list clicked: the custom character field follows the choice.
  void SelectDelimiter(DelimiterChoice choice);
  // The reset buttons. Neither refreshes the enabled states: after a reset from
  // "Custom Character" the field stays enabled until the list is clicked.
  void ResetToStandard();  // comma, double quote, strict off
  void ResetToExcel();     // semicolon, double quote, strict on
  void RefreshStates() { otherCharEnabled_ = delimiter == DelimiterChoice::Custom; }

  bool IsEnabled(FormatControl control) const;
  // A custom delimiter needs a character; a single blank is one.
  CheckResult<FormatControl> Check() const;

  DelimiterChoice delimiter = DelimiterChoice::Semicolon;
  std::u16string otherChar;
  QuoteChoice quote = QuoteChoice::DoubleQuote;
  bool strict = true;

 private:
  bool otherCharEnabled_ = false;
};

}  // namespace qm
