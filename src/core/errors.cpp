#include "core/errors.h"

#include "core/convert.h"
#include "core/messages.h"
#include "core/utf.h"

namespace qm {

QmError::QmError(std::u16string_view message) : std::runtime_error(Utf16ToUtf8(message)), message_(message) {}

void RaiseListIndexError(int64_t index) { throw EListError(Format(msg::kListIndexOutOfBounds, {IntToStr(index)})); }

void RaiseInvalidInteger(std::u16string_view text) { throw EConvertError(Format(msg::kInvalidInteger, {text})); }

std::u16string ExceptionText(const std::exception& e) {
  if (auto* own = dynamic_cast<const QmError*>(&e)) return own->Message();
  return Utf8ToUtf16(e.what());
}

std::u16string Format(std::u16string_view pattern, std::initializer_list<std::u16string_view> args) {
  std::u16string out;
  auto next = args.begin();
  for (size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == u'%' && i + 1 < pattern.size() && (pattern[i + 1] == u's' || pattern[i + 1] == u'd') &&
        next != args.end()) {
      out += *next++;
      ++i;
    } else {
      out.push_back(pattern[i]);
    }
  }
  return out;
}

}  // namespace qm
