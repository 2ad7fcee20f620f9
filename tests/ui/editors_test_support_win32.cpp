#include "editors_test_support_win32.h"

#include <commctrl.h>

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string_view>

#include "dialogs/access_keys.h"

namespace qm::test {

void Editors::SetUp() {
  DeleteFileW(ui::PlacementStorePath().c_str());
  static constexpr std::string_view kFamilies[] = {"editors_columns_test", "editors_open_save_test",
                                                   "editors_cells_test",   "editors_keyboard_test",
                                                   "editors_files_test",   "editors_conditions_test"};
  static size_t reached = 0;
  const std::string_view file = ::testing::UnitTest::GetInstance()->current_test_info()->file();
  size_t family = 0;
  while (family < std::size(kFamilies) && file.find(kFamilies[family]) == std::string_view::npos) ++family;
  ASSERT_LT(family, std::size(kFamilies)) << file;
  ASSERT_GE(family, reached) << file << " ran after " << kFamilies[reached] << ": its screenshots would differ";
  reached = family;
}

PluginUnderTest& Plugin() {
  static PluginUnderTest plugin;
  return plugin;
}

std::string ScreenshotPath(const std::string& name) {
  const char* folder = std::getenv("QMCSV_SCREENSHOTS");
  std::filesystem::path dir = folder ? folder : "screenshots";
  std::filesystem::create_directories(dir);
  return (dir / (name + ".png")).string();
}

void ShootPages(HWND dialog, const std::string& stem, int pages) {
  for (int page = 0; page < pages; ++page) {
    SelectTab(dialog, page);
    Screenshot(dialog, ScreenshotPath(stem + "_" + std::to_string(page)));
  }
  SelectTab(dialog, 0);
}

void ShootState(HWND dialog, const std::string& name) {
  Screenshot(dialog, ScreenshotPath(name + "_" + std::to_string(PluginUnderTest::Scale())));
}

HWND Labelled(HWND dialog, std::u16string_view label) {
  std::wstring text;
  for (char16_t c : label)
    if (c != u'&') text += static_cast<wchar_t>(c);
  while (!text.empty() && text.back() == L' ') text.pop_back();
  return ByLabel(dialog, text);
}

std::vector<std::wstring> TabCaptions(HWND dialog) {
  HWND tabs = FindWindowExW(dialog, nullptr, WC_TABCONTROLW, nullptr);
  std::vector<std::wstring> captions;
  const auto count = tabs ? SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0) : 0;
  for (int i = 0; i < count; ++i) {
    wchar_t text[128] = {};
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = 128;
    SendMessageW(tabs, TCM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    captions.push_back(text);
  }
  return captions;
}

wchar_t KeyOf(const std::wstring& text) {
  const auto key = AccessKeys::KeyOf(std::u16string(text.begin(), text.end()));
  return static_cast<wchar_t>(key);
}

std::string Narrow(const std::wstring& text) { return std::string(text.begin(), text.end()); }

}  // namespace qm::test
