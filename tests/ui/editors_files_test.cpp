// Editors on a file: the "Source Format" page every editor on the source
// pages shows for a file source, and the "..." file choosers of the source
// and target frames.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "dialogs/cells_editor.h"
#include "dialogs/open_data_editor.h"
#include "dialogs/table_source_pages.h"
#include "dialogs/target_frame.h"
#include "editors_test_support_win32.h"
#include "temp_folder.h"
#include "ui/text_win32.h"

namespace qm::test {
namespace {

using ui::Wide;

// With a file source, each editor built on the source pages shows its third
// page, "Source Format"; the shots of its pages go into the user guide.
TEST_F(Editors, FileSourceShowsTheSourceFormatPage) {
  const std::wstring writeCells = Wide(CellsEditor(true).Caption());
  const struct {
    int32_t index;
    std::wstring caption;
    std::string shot;
  } cases[] = {
      {kInformationIndex, L"CSV Get Data Information", "information_file"},
      {kAddColumnIndex, L"CSV Add Column", "add_column_file"},
      {kRemoveColumnsIndex, L"CSV Remove Columns", "remove_columns_file"},
      {kMoveColumnIndex, L"CSV Move Column", "move_column_file"},
      {kReadCellsIndex, L"CSV Read Cells", "read_cells_file"},
      {kWriteCellsIndex, writeCells, "write_cells_file"},
      {kRemoveDuplicatesIndex, L"CSV Remove Duplicates", "remove_duplicates_file"},
  };
  for (const auto& c : cases) {
    test::DriveDialog([&] { Plugin().Configure(c.index, u"source=1\r\nfilename=orders.csv\r\n"); },
                      [&] {
                        HWND w = test::WaitForWindow(c.caption);
                        ASSERT_TRUE(w);
                        std::vector<std::wstring> captions = TabCaptions(w);
                        for (auto& caption : captions) std::erase(caption, L'&');
                        ASSERT_EQ(captions.size(), 3u) << c.shot;
                        EXPECT_EQ(captions[2], Wide(TableSourcePages::kPageCaptions[2])) << c.shot;
                        ShootPages(w, c.shot + "_100", 3);
                        test::Press(w, VK_ESCAPE);
                        EXPECT_TRUE(test::WaitUntilClosed(w));
                      });
  }
}

// The "..." choosers of the source and target frames: a path typed into the
// system's chooser lands in the file field (the save chooser adding the
// extension), and Cancel leaves the field as it was.
TEST_F(Editors, FileChoosersFillTheFileFieldAndCancelLeavesIt) {
  const testing::TempFolder temp;
  const std::wstring folder = temp.Path().wstring() + L"\\";
  const std::wstring existing = folder + L"chosen.csv";
  CloseHandle(CreateFileW(existing.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  const std::wstring fresh = folder + L"report";
  struct Case {
    int32_t index;
    std::wstring caption;
    std::u16string block;
    std::function<HWND(HWND)> field;
    std::wstring chooserTitle;  // empty: the system's own
    std::wstring typed, chosen;
  };
  const Case cases[] = {
      {kOpenDataIndex, L"CSV Open Data", u"", [](HWND w) { return Labelled(w, SourceFrame::kFileNameLabel); },
       Wide(SourceFrame::kBrowseTitle), existing, existing},
      {kSaveDataIndex, L"CSV Save Data", u"savetofile=1\r\n",
       [](HWND w) { return GetWindow(ByCaption(w, Wide(TargetFrame::kSaveToFile)), GW_HWNDNEXT); }, L"", fresh,
       fresh + L".csv"},
  };
  for (const auto& c : cases) {
    test::DriveDialog([&] { Plugin().Configure(c.index, c.block); },
                      [&] {
                        HWND w = test::WaitForWindow(c.caption);
                        ASSERT_TRUE(w);
                        HWND field = c.field(w);
                        HWND browse = GetWindow(field, GW_HWNDNEXT);
                        ASSERT_EQ(test::Text(browse), L"...");
                        test::Type(field, L"old.csv");
                        for (const bool confirm : {false, true}) {
                          test::ClickLater(browse);
                          HWND chooser = test::WaitForOwnedDialog(w);
                          ASSERT_TRUE(chooser);
                          if (!c.chooserTitle.empty()) {
                            EXPECT_EQ(test::Text(chooser), c.chooserTitle);
                          }
                          if (confirm) {
                            // The chooser's file name field: its one text field.
                            HWND name = nullptr;
                            EnumChildWindows(
                                chooser,
                                [](HWND child, LPARAM found) -> BOOL {
                                  wchar_t kind[16] = {};
                                  GetClassNameW(child, kind, 16);
                                  if (_wcsicmp(kind, L"Edit") != 0 || !IsWindowVisible(child)) return TRUE;
                                  *reinterpret_cast<HWND*>(found) = child;
                                  return FALSE;
                                },
                                reinterpret_cast<LPARAM>(&name));
                            ASSERT_TRUE(name);
                            test::Type(name, c.typed);
                          }
                          test::ClickLater(GetDlgItem(chooser, confirm ? IDOK : IDCANCEL));
                          EXPECT_TRUE(test::WaitUntilClosed(chooser));
                          const std::wstring now = test::Text(field);
                          EXPECT_EQ(_wcsicmp(now.c_str(), confirm ? c.chosen.c_str() : L"old.csv"), 0) << Narrow(now);
                        }
                        test::Press(w, VK_ESCAPE);
                        EXPECT_TRUE(test::WaitUntilClosed(w));
                      });
  }
}

}  // namespace
}  // namespace qm::test
