// The editors that work on a loaded table's columns and rows: Sort by Column
// (its refused OK on each page, Cancel, "{V}" at the caret), Get Data
// Information, Add Column, Move Column, Remove Duplicates and Remove Columns.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "beep_recorder_win32.h"
#include "dialogs/add_column_editor.h"
#include "dialogs/information_editor.h"
#include "dialogs/move_column_editor.h"
#include "dialogs/remove_columns_editor.h"
#include "dialogs/remove_duplicates_editor.h"
#include "dialogs/sort_editor.h"
#include "editors_test_support_win32.h"
#include "ui/text_win32.h"

namespace qm::test {
namespace {

using ui::Wide;

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
                        EXPECT_EQ(test::LastBeep(), static_cast<int>(MB_ICONEXCLAMATION));
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

TEST_F(Editors, GetDataInformationWritesTheVariables) {
  ExpectEditorWrites<InformationEditor>(
      kInformationIndex, u"recordcountvar=rows\r\n", L"CSV Get Data Information", "information", 2,
      [](HWND w) {
        EXPECT_EQ(test::Text(Labelled(w, InformationEditor::kRecordCountLabel)), L"rows");
        test::Type(Labelled(w, InformationEditor::kColumnCountLabel), L"cols");
      },
      [](InformationEditor& m) {
        m.recordCountVar = u"rows";
        m.columnCountVar = u"cols";
      });
}

TEST_F(Editors, AddColumnEnablesPositionAndValueByChoice) {
  const auto& labels = AddColumnEditor::kLabels;
  ExpectEditorWrites<AddColumnEditor>(
      kAddColumnIndex, u"", L"CSV Add Column", "add_column", 2,
      [&](HWND w) {
        HWND position = Labelled(w, labels[1]);
        HWND value = Labelled(w, labels[4]);
        EXPECT_FALSE(IsWindowEnabled(position));
        EXPECT_FALSE(IsWindowEnabled(value));
        test::Choose(Labelled(w, labels[0]), 1);
        EXPECT_TRUE(IsWindowEnabled(position));
        test::Type(position, L"2");
        test::Type(Labelled(w, labels[2]), L"Total");
        test::Choose(Labelled(w, labels[3]), 2);
        EXPECT_TRUE(IsWindowEnabled(value));
        test::Type(value, L"{x}");
      },
      [](AddColumnEditor& m) {
        m.action = AddColumnAction::Insert;
        m.position = u"2";
        m.name = u"Total";
        m.fill = ColumnFill::Static;
        m.value = u"{x}";
      });
}

TEST_F(Editors, MoveColumnRefusesABlankColumnAndWritesBoth) {
  ExpectEditorWrites<MoveColumnEditor>(
      kMoveColumnIndex, u"", L"CSV Move Column", "move_column", 2,
      [](HWND w) {
        test::Click(ByCaption(w, L"OK"));
        EXPECT_EQ(test::ShownTab(w), 0);
        EXPECT_EQ(test::BalloonText(w), CheckMessage<MoveColumnEditor>());
        test::Type(Labelled(w, MoveColumnEditor::kFromLabel), L"4");
        test::Type(Labelled(w, MoveColumnEditor::kToLabel), L"1");
      },
      [](MoveColumnEditor& m) {
        m.from = u"4";
        m.to = u"1";
      });
}

TEST_F(Editors, RemoveDuplicatesWritesCaseAndVariable) {
  ExpectEditorWrites<RemoveDuplicatesEditor>(
      kRemoveDuplicatesIndex, u"", L"CSV Remove Duplicates", "remove_duplicates", 2,
      [](HWND w) {
        test::Click(ByCaption(w, Wide(RemoveDuplicatesEditor::kCaseSensitive)));
        test::Type(Labelled(w, RemoveDuplicatesEditor::kVariableLabel), L"gone");
      },
      [](RemoveDuplicatesEditor& m) {
        m.caseSensitive = true;
        m.variable = u"gone";
      });
}

TEST_F(Editors, RemoveColumnsRefusesABlankListAndWritesIt) {
  ExpectEditorWrites<RemoveColumnsEditor>(
      kRemoveColumnsIndex, u"", L"CSV Remove Columns", "remove_columns", 2,
      [](HWND w) {
        test::Click(ByCaption(w, L"OK"));
        EXPECT_EQ(test::BalloonText(w), CheckMessage<RemoveColumnsEditor>());
        test::Type(Labelled(w, RemoveColumnsEditor::kColumnsLabel), L"1,3");
      },
      [](RemoveColumnsEditor& m) { m.columns = u"1,3"; });
}

}  // namespace
}  // namespace qm::test
