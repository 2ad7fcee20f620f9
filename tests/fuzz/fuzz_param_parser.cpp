// The parameter block parser: a block from UTF-8 or from raw UTF-16 units
// (lone surrogates, NULs and bare CRs included); every key it holds is read as
// each type, then written back, and the block's text must parse to the same
// values again.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "boundary/param_parser.h"
#include "core/utf.h"
#include "fuzz_input.h"

namespace {

void Check(bool condition, const char* what) {
  if (!condition) {
    std::fprintf(stderr, "fuzz_param_parser: %s\n", what);
    std::abort();
  }
}

// The names before "=" of every line, as the block's own keys.
std::vector<std::u16string> Names(std::u16string_view text) {
  std::vector<std::u16string> names;
  size_t start = 0;
  while (start < text.size() && names.size() < 64) {
    size_t end = text.find_first_of(u"\r\n", start);
    if (end == std::u16string_view::npos) end = text.size();
    const std::u16string_view line = text.substr(start, end - start);
    const size_t equals = line.find(u'=');
    if (equals != std::u16string_view::npos) names.emplace_back(line.substr(0, equals));
    start = end + 1;
  }
  return names;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  qm::fuzz::Input input(data, size);
  const uint8_t mode = input.Byte();
  const std::u16string text = mode & 1 ? input.RestAsUnits() : qm::Utf8ToUtf16(input.Rest());

  qm::TQMParamParser parser(text);
  const std::vector<std::u16string> names = Names(text);
  for (const std::u16string& name : names) {
    (void)parser.ParamExist(name);
    (void)parser.GetStringDef(name, u"fallback");
    (void)parser.GetIntegerDef(name, -1);
    (void)parser.GetBoolDef(name, true);
    // A list's count far past its items gives a text of that many line
    // breaks (gigabytes for 2147483647): left out until the parser bounds it.
    if (parser.GetIntegerDef(name + u"_count", 0) <= 65536) (void)parser.GetStringsDef(name, u"fallback");
  }

  // What the block holds survives a trip through its own text.
  const qm::TQMParamParser again(parser.Text());
  for (const std::u16string& name : names) {
    if (name.find_first_of(u"\r\n") != std::u16string::npos) continue;
    Check(again.ParamExist(name) == parser.ParamExist(name), "a key changed presence through Text()");
    Check(again.GetString(name) == parser.GetString(name), "a value changed through Text()");
  }

  // Writing each type, then reading it back.
  for (size_t k = 0; k < names.size() && k < 8; ++k) {
    const std::u16string& name = names[k];
    if (name.empty() || name.find_first_of(u"=\r\n") != std::u16string::npos) continue;
    const auto value = static_cast<int32_t>(k * 2654435761u + mode);
    parser.SetInteger(name, value);
    Check(parser.GetInteger(name) == value, "an integer written does not read back");
    parser.SetStrings(name, {u"a", u"", name});
    (void)parser.GetStrings(name);
    parser.SetString(name, u"");
    (void)parser.GetStringDef(name, u"x");
  }
  (void)parser.Text();
  return 0;
}
