#include "dialogs/format_frame.h"

#include "boundary/param_parser.h"
#include "core/messages.h"
#include "core/step_keys.h"

namespace qm {

void FormatFrame::Load(const TQMParamParser& block) {
  const int32_t d = block.GetInteger(keys::kDelimiter);
  delimiter = d >= 0 && d < int32_t{kDelimiterItems.size()} ? DelimiterChoice{d} : DelimiterChoice::Semicolon;
  otherChar = block.GetString(keys::kOtherChar);
  const int32_t q = block.GetInteger(keys::kQuoteChar);
  quote = q >= 0 && q < int32_t{kQuoteItems.size()} ? QuoteChoice{q} : QuoteChoice::DoubleQuote;
  strict = block.GetBool(keys::kStrictDelimiter);
  RefreshStates();
}

void FormatFrame::Save(TQMParamParser& block) const {
  block.SetInteger(keys::kDelimiter, static_cast<int32_t>(delimiter));
  block.SetString(keys::kOtherChar, otherChar);
  block.SetInteger(keys::kQuoteChar, static_cast<int32_t>(quote));
  block.SetBool(keys::kStrictDelimiter, strict);
}

void FormatFrame::SelectDelimiter(DelimiterChoice choice) {
  delimiter = choice;
  RefreshStates();
}

void FormatFrame::ResetToStandard() {
  delimiter = DelimiterChoice::Comma;
  quote = QuoteChoice::DoubleQuote;
  strict = false;
}

void FormatFrame::ResetToExcel() {
  delimiter = DelimiterChoice::Semicolon;
  quote = QuoteChoice::DoubleQuote;
  strict = true;
}

bool FormatFrame::IsEnabled(FormatControl control) const {
  return control == FormatControl::OtherChar || control == FormatControl::OtherCharLabel ? otherCharEnabled_ : true;
}

CheckResult<FormatControl> FormatFrame::Check() const {
  // Not trimmed: a single blank is a delimiter.
  if (delimiter == DelimiterChoice::Custom && otherChar.empty()) {
    return Fail(FormatControl::OtherChar, msg::kValueEmpty);
  }
  return std::nullopt;
}

}  // namespace qm
