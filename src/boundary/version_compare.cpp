#include "boundary/version_compare.h"

#include <array>
#include <cstdint>

namespace qm {

namespace {

std::array<uint64_t, 4> ReadVersion(std::u16string_view text) {
  std::array<uint64_t, 4> parts{};
  for (auto& part : parts) {
    size_t digits = 0;
    uint64_t value = 0;
    while (digits < text.size() && text[digits] >= u'0' && text[digits] <= u'9') {
      if (value < UINT64_MAX / 16) value = value * 10 + (text[digits] - u'0');
      ++digits;
    }
    part = value;
    // Drop the number and the separator after it; keep at most 100 characters.
    text = text.substr(digits + 1 <= text.size() ? digits + 1 : text.size());
    text = text.substr(0, 100);
  }
  return parts;
}

}  // namespace

int CompareVersions(std::u16string_view a, std::u16string_view b) {
  const auto x = ReadVersion(a);
  const auto y = ReadVersion(b);
  for (size_t i = 0; i < x.size(); ++i) {
    if (x[i] != y[i]) return x[i] < y[i] ? -1 : 1;
  }
  return 0;
}

}  // namespace qm
