// The dialog frame's placement store under Wine, through a real window: a
// position is remembered across openings, and a corrupt store falls back to
// the default placement. (What the frame does for a user is tested through
// the editors.)
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
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

}  // namespace
}  // namespace qm
