// The configuration editors as a user meets them: qmcsv.dll loaded as the host
// loads it, each editor opened through the catalogue's configure entry on a
// block and driven through its real window under Wine. The editors' rules are
// tested natively on their models; here: that the window shows and writes
// what the model says, and screenshots of every page at 100% and 150%.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "boundary/param_parser.h"
#include "dialogs/sort_editor.h"
#include "plugin_under_test_win32.h"
#include "ui/placement_store_win32.h"
#include "ui_driver_win32.h"

namespace qm {
namespace {

using test::ByCaption;
using test::ByLabel;

using test::PluginUnderTest;

constexpr int32_t kSortIndex = 4;

PluginUnderTest& Plugin() {
  static test::PluginUnderTest plugin;
  return plugin;
}

// Every test starts from the default placements.
class Editors : public ::testing::Test {
 protected:
  void SetUp() override { DeleteFileW(ui::PlacementStorePath().c_str()); }
};

std::string ScreenshotPath(const std::string& name) {
  const char* folder = std::getenv("QMCSV_SCREENSHOTS");
  std::filesystem::path dir = folder ? folder : "screenshots";
  std::filesystem::create_directories(dir);
  return (dir / (name + ".png")).string();
}

// Shots of every visible tab page of the dialog, named <stem>_<page>.
void ShootPages(HWND dialog, const std::string& stem, int pages) {
  for (int page = 0; page < pages; ++page) {
    test::SelectTab(dialog, page);
    test::Screenshot(dialog, ScreenshotPath(stem + "_" + std::to_string(page)));
  }
  test::SelectTab(dialog, 0);
}

// The block the editor's model writes for these settings.
template <class Model, class Set>
std::u16string ModelBlock(Set&& set) {
  Model model;
  model.Load(TQMParamParser(std::u16string_view{}));
  set(model);
  TQMParamParser block;
  model.Save(block);
  return block.Text();
}

TEST_F(Editors, SortWritesWhatWasChosenAndRefusesAnEmptyColumnOnItsPage) {
  for (int scale : {100, 150}) {
    PluginUnderTest::SetScale(scale);
    std::optional<std::u16string> written;
    test::DriveDialog([&] { written = Plugin().Configure(kSortIndex, u""); },
                      [&] {
                        HWND w = test::WaitForWindow(L"CSV Sort by Column");
                        ASSERT_TRUE(w);
                        // The task's table: no "Source Format" page.
                        ShootPages(w, "sort_" + std::to_string(scale), 2);
                        test::Click(ByCaption(w, L"OK"));
                        EXPECT_EQ(test::ShownTab(w), 0);
                        EXPECT_EQ(test::LastBeep(w), static_cast<int>(MB_ICONEXCLAMATION));
                        EXPECT_EQ(test::BalloonText(w), L"Value is empty");
                        if (scale == 100) test::Screenshot(w, ScreenshotPath("sort_refused_100"));
                        test::Type(ByLabel(w, L"Sort by column (from 1):"), L"3");
                        HWND caseSensitive = ByCaption(w, L"Case sensitive");
                        EXPECT_TRUE(IsWindowEnabled(caseSensitive));
                        test::Choose(ByLabel(w, L"Sort mode:"), 1);
                        EXPECT_FALSE(IsWindowEnabled(caseSensitive));
                        test::Choose(ByLabel(w, L"Sort direction:"), 1);
                        // A file source without a name: refused on the "Source" page.
                        test::SelectTab(w, 1);
                        test::Click(ByCaption(w, L"File"));
                        test::Click(ByCaption(w, L"OK"));
                        EXPECT_EQ(test::ShownTab(w), 1);
                        EXPECT_EQ(test::BalloonText(w), L"Value is empty");
                        ShootPages(w, "sort_file_" + std::to_string(scale), 3);
                        test::Type(ByLabel(w, L"File name:"), L"orders.csv");
                        test::Press(w, VK_RETURN);
                        EXPECT_TRUE(test::WaitUntilClosed(w));
                      });
    const auto expected = ModelBlock<SortEditor>([](SortEditor& m) {
      m.column = u"3";
      m.mode = SortMode::Numbers;
      m.direction = SortDirection::Descending;
      m.pages.source.source = CsvSource::File;
      m.pages.source.fileName = u"orders.csv";
    });
    ASSERT_TRUE(written);
    EXPECT_EQ(*written, expected);
  }
  PluginUnderTest::SetScale(100);
}

TEST_F(Editors, SortCancelKeepsTheBlockAndInsertVariableGoesToTheCaret) {
  const std::u16string block = u"sortcolumn=12\r\nsortmode=1\r\n";
  PluginUnderTest::SetPickedVariable(u"{col}");
  std::optional<std::u16string> written;
  test::DriveDialog([&] { written = Plugin().Configure(kSortIndex, block); },
                    [&] {
                      HWND w = test::WaitForWindow(L"CSV Sort by Column");
                      ASSERT_TRUE(w);
                      HWND column = ByLabel(w, L"Sort by column (from 1):");
                      EXPECT_EQ(test::Text(column), L"12");
                      test::Focus(column);
                      SendMessageW(column, EM_SETSEL, 1, 1);
                      test::Click(ByCaption(w, L"{V}"));
                      EXPECT_EQ(test::Text(column), L"1{col}2");
                      test::Click(ByCaption(w, L"Cancel"));
                      EXPECT_TRUE(test::WaitUntilClosed(w));
                    });
  EXPECT_FALSE(written);
}

}  // namespace
}  // namespace qm
