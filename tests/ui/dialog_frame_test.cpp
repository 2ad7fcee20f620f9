// The dialog frame under Wine, driven through a real window: controls found by
// their labels, a refused OK (beep, page switch, balloon), OK and Esc, "{V}"
// at the caret, the remembered placement, and screenshots.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "boundary/host_services.h"
#include "ui/dialog_window_win32.h"
#include "ui/placement_store_win32.h"
#include "ui_driver_win32.h"

namespace qm {
namespace {

using ui::Box;

// Two pages with one field each; OK wants both fields filled.
class SampleDialog : public ui::DialogWindow {
 public:
  explicit SampleDialog(int scale) : DialogWindow(L"Sample Editor", L"TSampleForm", 360, 220, scale) {}

  std::wstring name, count;

 private:
  void Build() override {
    AddTabs(Box{8, 8, 344, 170});
    BeginPage(L"General");
    const Box area = PageArea();
    Label(L"&Name:", Box{area.x, area.y + 3, 90, 18});
    name_ = Edit(Box{area.x + 100, area.y, area.w - 100, 22}, 10);
    BeginPage(L"Other");
    Label(L"&Count:", Box{area.x, area.y + 3, 90, 18});
    count_ = Edit(Box{area.x + 100, area.y, area.w - 100, 22}, 11);
    AddDialogButtons(true);
  }
  bool Confirm() override {
    if (TextOf(name_).empty()) {
      ReportFailure(name_, L"Value is empty", ui::Beep::Warning);
      return false;
    }
    if (TextOf(count_).empty()) {
      ReportFailure(count_, L"Value is empty", ui::Beep::Default);
      return false;
    }
    name = TextOf(name_);
    count = TextOf(count_);
    return true;
  }
  HWND name_ = nullptr, count_ = nullptr;
};

std::string ScreenshotPath(const std::string& name) {
  const char* folder = std::getenv("QMCSV_SCREENSHOTS");
  std::filesystem::path dir = folder ? folder : "screenshots";
  std::filesystem::create_directories(dir);
  return (dir / (name + ".png")).string();
}

// The host's variable picker answers "{who}".
LongBool PickVariable(char16_t* buffer, int32_t) {
  const char16_t chosen[] = u"{who}";
  std::copy(std::begin(chosen), std::end(chosen), buffer);
  return kLongTrue;
}

TEST(DialogFrame, RefusedOkShowsThePageBeepAndBalloonThenOkCloses) {
  for (int scale : {100, 150}) {
    SampleDialog dialog(scale);
    bool confirmed = false;
    test::DriveDialog([&] { confirmed = dialog.RunModal(nullptr); },
                      [&] {
                        HWND w = test::WaitForWindow(L"Sample Editor");
                        ASSERT_TRUE(w);
                        test::Screenshot(w, ScreenshotPath("sample_general_" + std::to_string(scale)));
                        test::Type(test::ByLabel(w, L"Name:"), L"orders");
                        // Count is empty: OK goes to the second page with the default beep.
                        test::Click(test::ByCaption(w, L"OK"));
                        EXPECT_TRUE(IsWindow(w));
                        EXPECT_EQ(test::ShownTab(w), 1);
                        EXPECT_EQ(test::LastBeep(w), static_cast<int>(MB_OK));
                        EXPECT_EQ(test::BalloonText(w), L"Value is empty");
                        test::Screenshot(w, ScreenshotPath("sample_other_failed_" + std::to_string(scale)));
                        test::Type(test::ByLabel(w, L"Count:"), L"3");
                        test::Press(w, VK_RETURN);  // Enter is OK
                        EXPECT_TRUE(test::WaitUntilClosed(w));
                      });
    EXPECT_TRUE(confirmed);
    EXPECT_EQ(dialog.name, L"orders");
    EXPECT_EQ(dialog.count, L"3");
  }
}

TEST(DialogFrame, EscapeCancelsAndInsertVariableGoesToTheCaret) {
  TAFAppInfo app{};
  app.SelectVar = &PickVariable;
  SetHostApp(app, 1);
  SampleDialog dialog(100);
  bool confirmed = true;
  test::DriveDialog([&] { confirmed = dialog.RunModal(nullptr); },
                    [&] {
                      HWND w = test::WaitForWindow(L"Sample Editor");
                      ASSERT_TRUE(w);
                      HWND name = test::ByLabel(w, L"Name:");
                      test::Type(name, L"ab");
                      test::Focus(name);
                      SendMessageW(name, EM_SETSEL, 1, 1);
                      test::Click(test::ByCaption(w, L"{V}"));
                      EXPECT_EQ(test::Text(name), L"a{who}b");
                      test::Press(w, VK_ESCAPE);
                      EXPECT_TRUE(test::WaitUntilClosed(w));
                    });
  EXPECT_FALSE(confirmed);
  EXPECT_TRUE(dialog.name.empty());
  ClearHostApp();
}

TEST(DialogFrame, PlacementIsRememberedAndACorruptStoreFallsBack) {
  std::filesystem::remove(std::filesystem::path(ui::PlacementStorePath()));
  auto openAndMove = [](int x, int y, RECT& seen) {
    SampleDialog dialog(100);
    test::DriveDialog([&] { dialog.RunModal(nullptr); },
                      [&] {
                        HWND w = test::WaitForWindow(L"Sample Editor");
                        ASSERT_TRUE(w);
                        GetWindowRect(w, &seen);
                        if (x >= 0) SetWindowPos(w, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
                        test::Press(w, VK_ESCAPE);
                        EXPECT_TRUE(test::WaitUntilClosed(w));
                      });
  };
  RECT first{}, second{}, third{};
  openAndMove(40, 30, first);
  openAndMove(-1, -1, second);
  EXPECT_EQ(second.left, 40);
  EXPECT_EQ(second.top, 30);
  // Garbage in the store: the dialog opens where it first did.
  WritePrivateProfileStringW(L"TSampleForm", L"left", L"4O", ui::PlacementStorePath().c_str());
  openAndMove(-1, -1, third);
  EXPECT_EQ(third.left, first.left);
  EXPECT_EQ(third.top, first.top);
}

}  // namespace
}  // namespace qm
