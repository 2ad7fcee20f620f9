#include "dialogs/format_frame.h"

#include "boundary/param_parser.h"
#include "core/messages.h"

namespace qm {

void FormatFrame::Load(const TQMParamParser& block) {
  const int32_t d = block.GetIntegerDef(u"delimiter", 2);
  delimiter = d >= 0 && d < int32_t{kDelimiterItems.size()} ? DelimiterChoice{d} : DelimiterChoice::Semicolon;
  otherChar = block.GetString(u"otherchar");
  const int32_t q = block.GetIntegerDef(u"quotechar", 0);
  quote = q >= 0 && q < int32_t{kQuoteItems.size()} ? QuoteChoice{q} : QuoteChoice::DoubleQuote;
  strict = block.GetBoolDef(u"strictdelimiter", true);
  RefreshStates();
}

void FormatFrame::Save(TQMParamParser& block) const {
  block.SetInteger(u"delimiter", static_cast<int32_t>(delimiter));
  block.SetString(u"otherchar", otherChar);
  block.SetInteger(u"quotechar", static_cast<int32_t>(quote));
  block.SetBool(u"strictdelimiter", strict);
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
