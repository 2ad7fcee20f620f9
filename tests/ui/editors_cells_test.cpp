// Read Cells and Write Cells: the list of cells with its commands and the
// cell editor; and the help topics that ride on the editors' windows.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "beep_recorder_win32.h"
#include "dialogs/cell_item_editor.h"
#include "dialogs/cells_editor.h"
#include "dialogs/merge_editor.h"
#include "editors_test_support_win32.h"
#include "ui/text_win32.h"

namespace qm::test {
namespace {

using ui::Wide;

// The help topics of Write Cells and Merge Data ride on their windows.
TEST_F(Editors, WriteCellsAndMergeDataCarryTheirHelpContext) {
  const struct {
    int32_t index;
    std::u16string caption;
    DWORD help;
  } cases[] = {{kReadCellsIndex, std::u16string(CellsEditor(false).Caption()), 0},
               {kWriteCellsIndex, std::u16string(CellsEditor(true).Caption()), CellsEditor::kWriteHelpTopic},
               {kMergeIndex, std::u16string(MergeEditor::kCaption), MergeEditor::kHelpContext}};
  for (const auto& c : cases) {
    test::DriveDialog([&] { EXPECT_FALSE(Plugin().Configure(c.index, u"")); },
                      [&] {
                        HWND w = test::WaitForWindow(Wide(c.caption));
                        ASSERT_TRUE(w);
                        EXPECT_EQ(GetWindowContextHelpId(w), c.help) << c.index;
                        test::Press(w, VK_ESCAPE);
                        EXPECT_TRUE(test::WaitUntilClosed(w));
                      });
  }
}

// Both modes: an entry from the block, the refused commands with nothing
// selected, two entries added through the cell editor (whose OK refuses a
// blank column), one edited by double-click, one removed, and the list's
// column widths remembered.
TEST_F(Editors, CellsListAddsEditsAndRemovesThroughTheCellEditor) {
  const std::u16string block = u"cellcount=1\r\nrow0=5\r\ncol0=6\r\nval0=old\r\n";
  for (const bool write : {false, true}) {
    const CellsEditor mode(write);
    const std::string stem = write ? "write_cells" : "read_cells";
    const std::wstring valueLabel(CellItemEditor(true, write).ValueLabel().begin(),
                                  CellItemEditor(true, write).ValueLabel().end());
    for (int scale : {100, 150}) {
      DeleteFileW(ui::PlacementStorePath().c_str());
      PluginUnderTest::SetScale(scale);
      const std::string shot = stem + "_" + std::to_string(scale);
      // Fills the cell editor of `caption` and confirms it.
      auto fillCell = [&](const std::wstring& caption, const CellEntry& entry, bool refuseBlankColumn) {
        HWND e = test::WaitForWindow(caption);
        ASSERT_TRUE(e);
        test::Screenshot(e, ScreenshotPath(shot + (caption == L"Add cell" ? "_add" : "_edit")));
        test::Type(Labelled(e, CellItemEditor::kRowLabel), Wide(entry.row));
        if (refuseBlankColumn) {
          test::Type(Labelled(e, CellItemEditor::kColumnLabel), L" ");
          test::ForgetBeeps();
          test::Click(ByCaption(e, L"OK"));
          EXPECT_EQ(test::LastBeep(), static_cast<int>(MB_OK));
          EXPECT_TRUE(IsWindowVisible(e));
        }
        test::Type(Labelled(e, CellItemEditor::kColumnLabel), Wide(entry.column));
        test::Type(ByLabel(e, valueLabel), Wide(entry.value));
        test::Press(e, VK_RETURN);
        EXPECT_TRUE(test::WaitUntilClosed(e));
      };
      std::optional<std::u16string> written;
      test::DriveDialog([&] { written = Plugin().Configure(write ? kWriteCellsIndex : kReadCellsIndex, block); },
                        [&] {
                          HWND w = test::WaitForWindow(Wide(mode.Caption()));
                          ASSERT_TRUE(w);
                          HWND list = Labelled(w, CellsEditor::kListLabel);
                          const auto& commands = CellsEditor::kCommandCaptions;
                          EXPECT_EQ(ListView_GetItemCount(list), 1);
                          EXPECT_EQ(test::LastBeep(), -1);
                          test::Click(ByCaption(w, Wide(commands[2])));
                          EXPECT_EQ(test::LastBeep(), static_cast<int>(MB_OK));
                          EXPECT_EQ(ListView_GetItemCount(list), 1);
                          test::ClickLater(ByCaption(w, Wide(commands[1])));
                          EXPECT_FALSE(FindWindowW(nullptr, L"Edit cell"));

                          test::ClickLater(ByCaption(w, Wide(commands[0])));
                          fillCell(L"Add cell", {u"1", u"2", u"first"}, true);
                          test::ClickLater(ByCaption(w, Wide(commands[0])));
                          fillCell(L"Add cell", {u"3", u"4", u"second"}, false);
                          test::DoubleClickItemLater(list, 1);
                          fillCell(L"Edit cell", {u"1", u"2", u"renamed"}, false);
                          test::SelectItem(list, 0);
                          test::Click(ByCaption(w, Wide(commands[2])));
                          EXPECT_EQ(ListView_GetItemCount(list), 2);
                          ShootPages(w, shot, 2);
                          test::Click(ByCaption(w, L"OK"));
                          EXPECT_TRUE(test::WaitUntilClosed(w));
                        });
      CellsEditor expected(write);
      expected.Load(TQMParamParser(block));
      expected.cells = {{u"1", u"2", u"renamed"}, {u"3", u"4", u"second"}};
      TQMParamParser expectedBlock;
      expected.Save(expectedBlock);
      ASSERT_TRUE(written) << scale;
      EXPECT_EQ(*written, expectedBlock.Text()) << scale;
      ui::Placement placement;
      EXPECT_TRUE(ui::LoadPlacement(L"TCSVcellsForm", placement));
      EXPECT_EQ(placement.columns.size(), 3u);
    }
  }
  PluginUnderTest::SetScale(100);
}

}  // namespace
}  // namespace qm::test
