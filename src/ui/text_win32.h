// The models' UTF-16 texts as the Windows API's wide strings (both are 16-bit
// units on Windows).
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qm::ui {

inline std::wstring Wide(std::u16string_view text) { return std::wstring(text.begin(), text.end()); }
inline std::u16string Utf16(std::wstring_view text) { return std::u16string(text.begin(), text.end()); }

inline std::vector<std::wstring> WideItems(std::span<const std::u16string_view> items) {
  std::vector<std::wstring> out;
  for (auto item : items) out.push_back(Wide(item));
  return out;
}

}  // namespace qm::ui
