// The dialog frame's placement store under Wine, through a real window: a
// position is remembered across openings, and a corrupt store falls back to
// the default placement. (What the frame does for a user is tested through
// the editors.)
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

#include "ui/dialog_window_win32.h"
#include "ui/placement_store_win32.h"
#include "ui_driver_win32.h"

namespace qm {
namespace {

using ui::Box;

// A dialog with one field: enough to be opened, moved and closed.
class SampleDialog : public ui::DialogWindow {
 public:
  SampleDialog() : DialogWindow(L"Sample Editor", L"TSampleForm", 360, 220, 100) {}

 private:
  void Build() override {
    Label(L"&Name:", Box{10, 13, 90, 18});
    Edit(Box{110, 10, 240, 22}, 10);
    AddDialogButtons(false);
  }
  bool Confirm() override { return true; }
};

TEST(DialogFrame, PlacementIsRememberedAndACorruptStoreFallsBack) {
  std::filesystem::remove(std::filesystem::path(ui::PlacementStorePath()));
  auto openAndMove = [](int x, int y, RECT& seen) {
    SampleDialog dialog;
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

// Opens the sample dialog, runs `script` on its window and closes it with Esc.
void WithSample(const std::function<void(HWND)>& script) {
  SampleDialog dialog;
  test::DriveDialog([&] { dialog.RunModal(nullptr); },
                    [&] {
                      HWND w = test::WaitForWindow(L"Sample Editor");
                      ASSERT_TRUE(w);
                      script(w);
                      test::Press(w, VK_ESCAPE);
                      EXPECT_TRUE(test::WaitUntilClosed(w));
                    });
}

bool operator==(const RECT& a, const RECT& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

// Closed maximized, the dialog reopens maximized and restores to the size it
// had before; a position on no monitor is brought onto the nearest one.
TEST(DialogFrame, PlacementKeepsTheNormalSizeAndTheMaximizedState) {
  std::filesystem::remove(std::filesystem::path(ui::PlacementStorePath()));
  const RECT normal{40, 30, 460, 290};
  WithSample([&](HWND w) { SetWindowPos(w, nullptr, normal.left, normal.top, 420, 260, SWP_NOZORDER); });
  WithSample([](HWND w) {
    SendMessageW(w, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    EXPECT_TRUE(IsZoomed(w));
  });
  WithSample([&](HWND w) {
    EXPECT_TRUE(IsZoomed(w));
    SendMessageW(w, WM_SYSCOMMAND, SC_RESTORE, 0);
    RECT now{};
    GetWindowRect(w, &now);
    EXPECT_TRUE(now == normal) << now.left << "," << now.top << " " << now.right - now.left << "x"
                               << now.bottom - now.top;
  });
  // Far off every screen: shown whole on the nearest monitor, its size kept.
  WritePrivateProfileStringW(L"TSampleForm", L"left", L"5000", ui::PlacementStorePath().c_str());
  WritePrivateProfileStringW(L"TSampleForm", L"top", L"4000", ui::PlacementStorePath().c_str());
  WithSample([](HWND w) {
    EXPECT_FALSE(IsZoomed(w));
    RECT now{};
    GetWindowRect(w, &now);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(w, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& work = monitor.rcWork;
    EXPECT_EQ(now.right - now.left, 420);
    EXPECT_EQ(now.bottom - now.top, 260);
    EXPECT_TRUE(now.left >= work.left && now.top >= work.top && now.right <= work.right && now.bottom <= work.bottom)
        << now.left << "," << now.top;
  });
}

}  // namespace
}  // namespace qm
