// The configuration editors as a user meets them: qmcsv.dll loaded as the host
// loads it, each editor opened through the catalogue's configure entry on a
// block and driven through its real window under Wine. The editors' rules are
// tested natively on their models; here: that the window shows and writes
// what the model says, and screenshots of every page at 100% and 150%.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <filesystem>
#include <functional>
#include <iterator>
#include <string>

#include "boundary/param_parser.h"
#include "core/action_catalogue.h"
#include "core/messages.h"
#include "dialogs/access_keys.h"
#include "core/utf.h"
#include "dialogs/add_column_editor.h"
#include "dialogs/cells_editor.h"
#include "dialogs/data_loop_editor.h"
#include "dialogs/filter_data_editor.h"
#include "dialogs/information_editor.h"
#include "dialogs/merge_editor.h"
#include "dialogs/move_column_editor.h"
#include "dialogs/open_data_editor.h"
#include "dialogs/remove_columns_editor.h"
#include "dialogs/remove_duplicates_editor.h"
#include "dialogs/save_data_editor.h"
#include "dialogs/sort_editor.h"
#include "plugin_under_test_win32.h"
#include "temp_folder.h"
#include "ui/placement_store_win32.h"
#include "ui/text_win32.h"
#include "ui_driver_win32.h"

namespace qm {
namespace {

using test::ByCaption;
using test::ByLabel;
using ui::Utf16;
using ui::Wide;

using test::PluginUnderTest;

constexpr int32_t kOpenDataIndex = CatalogueIndex(Action::OpenData);
constexpr int32_t kInformationIndex = CatalogueIndex(Action::DataInformation);
constexpr int32_t kAddColumnIndex = CatalogueIndex(Action::AddColumn);
constexpr int32_t kRemoveColumnsIndex = CatalogueIndex(Action::RemoveColumns);
constexpr int32_t kSortIndex = CatalogueIndex(Action::SortByColumn);
constexpr int32_t kMoveColumnIndex = CatalogueIndex(Action::MoveColumn);
constexpr int32_t kReadCellsIndex = CatalogueIndex(Action::ReadCells);
constexpr int32_t kWriteCellsIndex = CatalogueIndex(Action::WriteCells);
constexpr int32_t kMergeIndex = CatalogueIndex(Action::MergeData);
constexpr int32_t kFilterDataIndex = CatalogueIndex(Action::FilterData);
constexpr int32_t kDataLoopIndex = CatalogueIndex(Action::DataLoop);
constexpr int32_t kRemoveDuplicatesIndex = CatalogueIndex(Action::RemoveDuplicates);
constexpr int32_t kSaveDataIndex = CatalogueIndex(Action::SaveData);

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

// The block the editor's model writes for these settings, made on `from`.
template <class Model, class Set>
std::u16string ModelBlock(Set&& set, std::u16string_view from = {}) {
  Model model;
  model.Load(TQMParamParser(from));
  set(model);
  TQMParamParser block;
  model.Save(block);
  return block.Text();
}


// Opens the editor of `index` on `block` at 100% and 150%, shoots its first
// `pages` pages as <stem>_<scale>_<page>, runs `script` on its window and
// expects the block the model writes after `set`.
template <class Model, class Set>
void ExpectEditorWrites(int32_t index, const std::u16string& block, const std::wstring& caption,
                        const std::string& stem, int pages, const std::function<void(HWND)>& script, Set&& set) {
  for (int scale : {100, 150}) {
    PluginUnderTest::SetScale(scale);
    std::optional<std::u16string> written;
    test::DriveDialog([&] { written = Plugin().Configure(index, block); },
                      [&] {
                        HWND w = test::WaitForWindow(caption);
                        ASSERT_TRUE(w);
                        ShootPages(w, stem + "_" + std::to_string(scale), pages);
                        script(w);
                        test::Press(w, VK_RETURN);
                        EXPECT_TRUE(test::WaitUntilClosed(w));
                      });
    ASSERT_TRUE(written) << scale;
    EXPECT_EQ(*written, ModelBlock<Model>(set)) << scale;
  }
  PluginUnderTest::SetScale(100);
}

// A model's label as the driver finds it: without "&" and trailing blanks.
HWND Labelled(HWND dialog, std::u16string_view label) {
  std::wstring text;
  for (char16_t c : label)
    if (c != u'&') text += static_cast<wchar_t>(c);
  while (!text.empty() && text.back() == L' ') text.pop_back();
  return ByLabel(dialog, text);
}

// The balloon a refused OK shows for the model's failed check of a new step.
template <class Model>
std::wstring CheckMessage() {
  const auto failure = Model().Check();
  return failure ? std::wstring(failure->message.begin(), failure->message.end()) : std::wstring();
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

TEST_F(Editors, OpenDataRefusesAMissingFileAndWritesSourceAndFormat) {
  ExpectEditorWrites<OpenDataEditor>(
      kOpenDataIndex, u"", L"CSV Open Data", "open_data", 2,
      [](HWND w) {
        test::Click(ByCaption(w, L"OK"));
        EXPECT_EQ(test::ShownTab(w), 0);
        EXPECT_EQ(test::BalloonText(w), CheckMessage<OpenDataEditor>());
        test::Type(Labelled(w, SourceFrame::kFileNameLabel), L"in.csv");
        test::Choose(Labelled(w, SourceFrame::kEncodingLabel), 2);
        test::SelectTab(w, 1);
        test::Choose(Labelled(w, FormatFrame::kDelimiterLabel), int(DelimiterChoice::Tab));
      },
      [](OpenDataEditor& m) {
        m.source.fileName = u"in.csv";
        m.source.encoding = EncodingFromIndex(2);
        m.format.SelectDelimiter(DelimiterChoice::Tab);
      });
}

// The number of tab pages the dialog shows.
int TabCount(HWND dialog) {
  return static_cast<int>(SendMessageW(FindWindowExW(dialog, nullptr, WC_TABCONTROLW, nullptr), TCM_GETITEMCOUNT, 0, 0));
}

TEST_F(Editors, SaveDataEnablesNamesByChoiceAndShowsTheFormatOnlyWhenChanged) {
  ExpectEditorWrites<SaveDataEditor>(
      kSaveDataIndex, u"notchangeformat=0\r\n", L"CSV Save Data", "save_data", 2,
      [&](HWND w) {
        HWND toVariable = ByCaption(w, Wide(TargetFrame::kSaveToVariable));
        HWND variable = GetWindow(toVariable, GW_HWNDNEXT);
        EXPECT_FALSE(IsWindowEnabled(variable));
        test::Click(toVariable);
        EXPECT_TRUE(IsWindowEnabled(variable));
        test::Click(ByCaption(w, L"OK"));
        EXPECT_EQ(test::BalloonText(w), Wide(msg::kValueEmpty));
        test::Type(variable, L"csv");
        HWND toFile = ByCaption(w, Wide(TargetFrame::kSaveToFile));
        test::Click(toFile);
        test::Type(GetWindow(toFile, GW_HWNDNEXT), L"out.csv");
        test::Choose(Labelled(w, TargetFrame::kEncodingLabel), 2);
        HWND keep = ByCaption(w, Wide(TargetFrame::kKeepFormat));
        test::Click(keep);
        EXPECT_EQ(TabCount(w), 1);
        test::Click(keep);
        EXPECT_EQ(TabCount(w), 2);
        test::SelectTab(w, 1);
        test::Choose(Labelled(w, FormatFrame::kDelimiterLabel), int(DelimiterChoice::Tab));
      },
      [](SaveDataEditor& m) {
        m.target = {true, u"csv", true, u"out.csv", EncodingFromIndex(2), false};
        m.format.SelectDelimiter(DelimiterChoice::Tab);
      });
}

TEST_F(Editors, MergeDataWritesSourceFormatAndColumnChoice) {
  ExpectEditorWrites<MergeEditor>(
      kMergeIndex, u"ajustcolumns=1\r\n", L"CSV Merge Data", "merge", 3,
      [](HWND w) {
        HWND adjust = ByCaption(w, Wide(MergeEditor::kMismatchItems[1]));
        EXPECT_TRUE(test::IsChecked(adjust));
        test::Click(ByCaption(w, L"OK"));
        EXPECT_EQ(test::ShownTab(w), 0);
        EXPECT_EQ(test::BalloonText(w), CheckMessage<MergeEditor>());
        test::Type(Labelled(w, SourceFrame::kFileNameLabel), L"more.csv");
        test::SelectTab(w, 2);
        test::Click(ByCaption(w, Wide(MergeEditor::kMismatchItems[0])));
      },
      [](MergeEditor& m) { m.source.fileName = u"more.csv"; });
}

// The shot of a state of the editor, named <name>_<scale>.
void ShootState(HWND dialog, const std::string& name) {
  test::Screenshot(dialog, ScreenshotPath(name + "_" + std::to_string(PluginUnderTest::Scale())));
}

// The custom delimiter is free text: typed or inserted with "{V}", a
// variable reference goes in whole and can be read in the field.
TEST_F(Editors, FormatCharacterTakesAVariableReferenceTypedOrInserted) {
  PluginUnderTest::SetPickedVariable(u"{delim}");
  ExpectEditorWrites<OpenDataEditor>(
      kOpenDataIndex, u"source=1\r\nfilename=in.csv\r\ndelimiter=4\r\n", L"CSV Open Data", "open_data_custom", 2,
      [](HWND w) {
        test::SelectTab(w, 1);
        HWND field = Labelled(w, FormatFrame::kOtherCharLabel);
        test::Focus(field);
        test::TypeKeys(field, L"{delim}");
        EXPECT_EQ(test::Text(field), L"{delim}");
        test::Type(field, L"");
        test::Focus(field);
        test::Click(ByCaption(w, L"{V}"));
        EXPECT_EQ(test::Text(field), L"{delim}");
        // With the caret at its end the field still shows the first character.
        RECT client{};
        GetClientRect(field, &client);
        EXPECT_EQ(LOWORD(SendMessageW(field, EM_CHARFROMPOS, 0, MAKELPARAM(3, client.bottom / 2))), 0);
        ShootState(w, "open_data_character");
      },
      [](OpenDataEditor& m) {
        m.source.fileName = u"in.csv";
        m.format.SelectDelimiter(DelimiterChoice::Custom);
        m.format.otherChar = u"{delim}";
      });
}

// "Keep original CSV format" ticked hides "CSV Format", whose check still
// runs: its failure brings the page into view with the field focused.
TEST_F(Editors, SaveDataShowsTheHiddenFormatPageWhoseCheckFails) {
  ExpectEditorWrites<SaveDataEditor>(
      kSaveDataIndex, u"delimiter=4\r\n", L"CSV Save Data", "save_data_keep", 1,
      [](HWND w) {
        EXPECT_EQ(TabCount(w), 1);
        test::Click(ByCaption(w, L"OK"));
        EXPECT_EQ(test::LastBeep(w), static_cast<int>(MB_ICONEXCLAMATION));
        EXPECT_EQ(test::BalloonText(w), Wide(msg::kValueEmpty));
        HWND field = Labelled(w, FormatFrame::kOtherCharLabel);
        EXPECT_TRUE(IsWindowVisible(field));
        EXPECT_EQ(test::Focused(w), field);
        EXPECT_EQ(TabCount(w), 2);
        EXPECT_EQ(test::ShownTab(w), 1);
        ShootState(w, "save_data_hidden_refused");
        test::TypeKeys(field, L"|");
      },
      [](SaveDataEditor& m) {
        m.format.SelectDelimiter(DelimiterChoice::Custom);
        m.format.otherChar = u"|";
      });
}

// "Skip first lines" saves the spinner's position: an entry above the range
// is held to its top, an empty one keeps the position the spinner had.
TEST_F(Editors, SkipFirstLinesSavesTheSpinnersPositionWithinItsRange) {
  const std::u16string block = u"source=1\r\nfilename=in.csv\r\nskipfirst=7\r\n";
  const struct {
    std::wstring typed;
    int32_t saved;
  } cases[] = {{L"250", SourceFrame::kSkipFirstMax}, {L"", 7}, {L"12", 12}};
  for (const auto& c : cases) {
    std::optional<std::u16string> written;
    test::DriveDialog([&] { written = Plugin().Configure(kOpenDataIndex, block); },
                      [&] {
                        HWND w = test::WaitForWindow(L"CSV Open Data");
                        ASSERT_TRUE(w);
                        test::Type(Labelled(w, SourceFrame::kSkipFirstLabel), c.typed);
                        test::Press(w, VK_RETURN);
                        EXPECT_TRUE(test::WaitUntilClosed(w));
                      });
    ASSERT_TRUE(written);
    EXPECT_EQ(*written, ModelBlock<OpenDataEditor>([&](OpenDataEditor& m) { m.source.skipFirst = c.saved; }, block))
        << c.saved;
  }
}

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
          test::Click(ByCaption(e, L"OK"));
          EXPECT_EQ(test::LastBeep(e), static_cast<int>(MB_OK));
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
                          EXPECT_EQ(test::LastBeep(w), -1);
                          test::Click(ByCaption(w, Wide(commands[2])));
                          EXPECT_EQ(test::LastBeep(w), static_cast<int>(MB_OK));
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

namespace keyboard {

using Names = std::vector<std::wstring>;

Names Join(std::initializer_list<Names> parts) {
  Names all;
  for (const auto& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

// The frames' controls in tab order, as the next test names them.
const Names kFormat = {L"Delimiter:", L"Character:", L"Quote character:",
                       L"Strict delimiter (space is not a delimiter)", L"Reset to standard format",
                       L"Reset to Excel format"};
const Names kFileSource = {L"File name:", L"...", L"Encoding:", L"Skip first lines:", L"Skip empty lines",
                           L"Skip lines starting with:", L"Skip lines starting with:", L"First row is column headers"};
const Names kSource = Join({{L"Prev. CSV action", L"File", L"Text"}, kFileSource});
const Names kOpenSource = Join({{L"File", L"Text"}, kFileSource});
const Names kTarget = {L"Save to variable:", L"Save to variable:", L"Save to file:", L"Save to file:", L"...",
                       L"Encoding:", L"Keep original CSV format"};

bool IsClass(HWND w, const wchar_t* name) {
  wchar_t found[64] = {};
  GetClassNameW(w, found, 64);
  return _wcsicmp(found, name) == 0;
}

bool IsDialogWide(HWND w) {
  const int id = GetDlgCtrlID(w);
  return id == IDOK || id == IDCANCEL || id == 901 || IsClass(w, WC_TABCONTROLW);
}

// The shown page's controls a user reaches by keyboard, in tab order, each
// named by its own caption or, lacking one, by the label or check box
// directly before it.
Names PageOrder(HWND dialog) {
  Names names;
  HWND before = nullptr;
  for (HWND w = GetWindow(dialog, GW_CHILD); w; before = w, w = GetWindow(w, GW_HWNDNEXT)) {
    const auto style = GetWindowLongPtrW(w, GWL_STYLE);
    const bool radio = IsClass(w, L"Button") && (style & BS_TYPEMASK) == BS_AUTORADIOBUTTON;
    if (!IsWindowVisible(w) || IsDialogWide(w) || !((style & WS_TABSTOP) || radio)) continue;
    if (IsClass(w, L"Button")) names.push_back(test::CaptionOf(w));
    else names.push_back(before && (IsClass(before, L"Static") || IsClass(before, L"Button")) ? test::CaptionOf(before)
                                                                                            : L"");
  }
  return names;
}

std::string Narrow(const std::wstring& text) { return std::string(text.begin(), text.end()); }

wchar_t KeyOf(const std::wstring& text) {
  const auto key = AccessKeys::KeyOf(std::u16string(text.begin(), text.end()));
  return static_cast<wchar_t>(key);
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

// On the shown page: every access key in sight is unique, and Alt with a
// label's key focuses the control after it.
void ExpectKeysOfPage(HWND dialog, const std::string& where) {
  std::wstring keys;
  for (const auto& caption : TabCaptions(dialog)) keys += KeyOf(caption);
  std::vector<HWND> labels;
  for (HWND w = GetWindow(dialog, GW_CHILD); w; w = GetWindow(w, GW_HWNDNEXT)) {
    if (!IsWindowVisible(w)) continue;
    // Labels of a control and buttons with a letter carry a key (OK and Cancel have Enter and Esc).
    const HWND next = GetWindow(w, GW_HWNDNEXT);
    const bool label = IsClass(w, L"Static") && next && !IsClass(next, L"Static") &&
                       (GetWindowLongPtrW(next, GWL_STYLE) & WS_TABSTOP);
    const bool button = IsClass(w, L"Button") && (GetWindowLongPtrW(w, GWL_STYLE) & BS_TYPEMASK) != BS_GROUPBOX &&
                        GetDlgCtrlID(w) != IDOK && GetDlgCtrlID(w) != IDCANCEL &&
                        test::Text(w).find_first_of(L"ABCDEFGHIJKLMNOPQRSTUVWXYZ") != std::wstring::npos;
    if (label || button) {
      EXPECT_TRUE(KeyOf(test::Text(w))) << where << ": no key on " << Narrow(test::Text(w));
    }
    if (!KeyOf(test::Text(w))) continue;
    keys += KeyOf(test::Text(w));
    if (IsClass(w, L"Static") && IsWindowEnabled(w)) labels.push_back(w);
  }
  for (size_t i = 0; i < keys.size(); ++i) {
    EXPECT_EQ(keys.find(keys[i], i + 1), std::wstring::npos) << where << ": key " << char(keys[i]) << " twice";
  }
  for (HWND label : labels) {
    HWND control = GetWindow(label, GW_HWNDNEXT);
    test::Focus(FindWindowExW(dialog, nullptr, WC_TABCONTROLW, nullptr));
    test::PressAlt(dialog, KeyOf(test::Text(label)));
    HWND focused = test::Focused(dialog);
    EXPECT_TRUE(focused == control || IsChild(control, focused))
        << where << ": Alt+" << char(KeyOf(test::Text(label))) << " missed the control after its label";
  }
}

}  // namespace keyboard

// Every editor, every page: the controls in the order the user tabs through
// them, labels right before their controls, access keys unique and leading
// to their controls, and the page keys (Alt with a tab's key, Ctrl+Tab,
// Ctrl+Shift+Tab, Ctrl+PgDn, Ctrl+PgUp).
TEST_F(Editors, KeyboardReachesEveryPageAndControlInOrder) {
  using namespace keyboard;
  struct Case {
    int32_t index;
    std::wstring caption;
    std::u16string block;
    std::vector<Names> pages;
  };
  const std::u16string file = u"source=1\r\n";
  const Case cases[] = {
      {kOpenDataIndex, L"CSV Open Data", u"", {kOpenSource, kFormat}},
      {kInformationIndex, L"CSV Get Data Information", file,
       {{L"Save record count to variable:", L"Save column count to variable:"}, kSource, kFormat}},
      {kAddColumnIndex, L"CSV Add Column", file,
       {{L"Action:", L"Insert at (from 1):", L"Column name:", L"Fill mode:", L"Column value:"}, kSource, kFormat}},
      {kRemoveColumnsIndex, L"CSV Remove Columns", file, {{L"One or more column numbers (from 1, comma separated):"}, kSource, kFormat}},
      {kSortIndex, L"CSV Sort by Column", file,
       {{L"Sort by column (from 1):", L"Sort direction:", L"Sort mode:", L"Case sensitive"}, kSource, kFormat}},
      {kMoveColumnIndex, L"CSV Move Column", file, {{L"Column number (from 1):", L"Move to:"}, kSource, kFormat}},
      {kReadCellsIndex, L"CSV Read Cells", file, {{L"Cells list:", L"Add...", L"Edit...", L"Remove"}, kSource, kFormat}},
      {kMergeIndex, L"CSV Merge Data", u"", {kOpenSource, kFormat, {L"Raise an error", L"Adjust the number of columns"}}},
      {kRemoveDuplicatesIndex, L"CSV Remove Duplicates", file,
       {{L"Case sensitive", L"Save number of deleted rows to variable:"}, kSource, kFormat}},
      {kSaveDataIndex, L"CSV Save Data", u"notchangeformat=0\r\n", {kTarget, kFormat}},
      {kDataLoopIndex, L"CSV Data Loop", file,
       {{L"Save row number to variable:", L"Save current row to a variable:", L"Save format:", L"Filter Options",
         L"", L"Add...", L"Edit...", L"Remove"},
        kSource,
        kFormat}},
      {kFilterDataIndex, L"CSV Filter Data", file,
       {{L"...don't match filters", L"...match filters", L"Filter options", L"", L"Add ...", L"Edit ...", L"Remove"},
        kSource,
        kFormat}},
  };
  for (const auto& c : cases) {
    test::DriveDialog([&] { Plugin().Configure(c.index, c.block); },
                      [&] {
                        HWND w = test::WaitForWindow(c.caption);
                        ASSERT_TRUE(w);
                        const std::string name(c.caption.begin(), c.caption.end());
                        const int count = static_cast<int>(c.pages.size());
                        ASSERT_EQ(static_cast<int>(TabCaptions(w).size()), count) << name;
                        for (int page = 0; page < count; ++page) {
                          const std::string where = name + " page " + std::to_string(page);
                          EXPECT_EQ(test::ShownTab(w), page) << where;
                          EXPECT_EQ(PageOrder(w), c.pages[static_cast<size_t>(page)]) << where;
                          ExpectKeysOfPage(w, where);
                          test::Press(w, VK_TAB, true);
                        }
                        EXPECT_EQ(test::ShownTab(w), 0) << name;
                        test::Press(w, VK_TAB, true, true);
                        EXPECT_EQ(test::ShownTab(w), count - 1) << name;
                        test::Press(w, VK_NEXT, true);
                        EXPECT_EQ(test::ShownTab(w), 0) << name;
                        test::Press(w, VK_PRIOR, true);
                        EXPECT_EQ(test::ShownTab(w), count - 1) << name;
                        const auto captions = TabCaptions(w);
                        for (int page = 0; page < count; ++page) {
                          test::PressAlt(w, KeyOf(captions[static_cast<size_t>(page)]));
                          EXPECT_EQ(test::ShownTab(w), page) << name << " Alt+" << char(KeyOf(captions[size_t(page)]));
                        }
                        test::Press(w, VK_ESCAPE);
                        EXPECT_TRUE(test::WaitUntilClosed(w));
                      });
  }
}

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
                        std::vector<std::wstring> captions = keyboard::TabCaptions(w);
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
                          EXPECT_EQ(_wcsicmp(now.c_str(), confirm ? c.chosen.c_str() : L"old.csv"), 0)
                              << keyboard::Narrow(now);
                        }
                        test::Press(w, VK_ESCAPE);
                        EXPECT_TRUE(test::WaitUntilClosed(w));
                      });
  }
}

// ---- conditions: built in the Data Loop and Filter Data editors, then run ----

// A semicolon-separated table the conditions below are run on.
constexpr char kConditionRows[] = "10;\"a,\"\"b\"\"\";y\r\n20;A,B;Y\r\n31;a-b;y\r\n40;a,b;yy\r\n51;a,b;y\r\n";
constexpr wchar_t kConditionRowsFile[] = L"editors_condition_rows.csv";
// A pattern with a comma and a quote, a case-sensitive substring, and a
// column that is a variable reference (the task sets col=1).
const ConditionFields kPattern{u"2", u"a,\"?b", false, true};
const ConditionFields kSubstring{u"3", u"y", true, false};
const ConditionFields kVariableColumn{u"{col}", u"0", false, false};
const ConditionFields kDash{u"2", u"^a-", false, true};

// The conditions list of an editor's "General" page.
HWND ConditionsList(HWND dialog) { return FindWindowExW(dialog, nullptr, WC_LISTVIEWW, nullptr); }

std::vector<std::wstring> RowOf(HWND list, int row) {
  std::vector<std::wstring> texts;
  for (int c = 0; c < 4; ++c) {
    wchar_t text[256] = {};
    LVITEMW item{};
    item.iSubItem = c;
    item.pszText = text;
    item.cchTextMax = 256;
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    texts.emplace_back(text);
  }
  return texts;
}

std::vector<std::wstring> ShownRow(const ConditionFields& condition) {
  std::vector<std::wstring> texts;
  for (const auto& text : ConditionList::RowTexts(condition)) texts.push_back(Wide(text));
  return texts;
}

// Fills the condition dialog of `caption` with `fields` and confirms it; its
// label follows the regular-expression box.
void FillCondition(const std::wstring& caption, const ConditionFields& fields, const std::string& shot = {}) {
  HWND e = test::WaitForWindow(caption);
  ASSERT_TRUE(e);
  if (!shot.empty()) test::Screenshot(e, ScreenshotPath(shot));
  HWND regex = ByCaption(e, Wide(ConditionEditor::kUseRegex));
  HWND caseBox = ByCaption(e, Wide(ConditionEditor::kCaseSensitive));
  test::Type(Labelled(e, ConditionEditor::kColumnLabel), Wide(fields.column));
  if (test::IsChecked(regex) != fields.regex) test::Click(regex);
  if (test::IsChecked(caseBox) != fields.caseSensitive) test::Click(caseBox);
  const auto label = fields.regex ? ConditionEditor::kPatternLabel : ConditionEditor::kTextLabel;
  test::Type(Labelled(e, label), Wide(fields.expression));
  test::Press(e, VK_RETURN);
  EXPECT_TRUE(test::WaitUntilClosed(e));
}

// The transcript qmhost prints for a task of the steps given, run on the
// rows file with col=1.
std::vector<std::string> RunSteps(const std::string& steps) {
  {
    std::ofstream rows(std::filesystem::path(kConditionRowsFile), std::ios::binary);
    rows << kConditionRows;
    std::ofstream task("editors_conditions.qmt", std::ios::binary);
    task << "[set-variable]\nname=col\nvalue=1\n\n" << steps;
  }
  SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
  HANDLE out = CreateFileW(L"editors_conditions.out", GENERIC_WRITE, FILE_SHARE_READ, &inherit, CREATE_ALWAYS,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = startup.hStdError = out;
  PROCESS_INFORMATION process{};
  std::wstring command = L"qmhost.exe run editors_conditions.qmt";
  if (CreateProcessW(L"qmhost.exe", command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process)) {
    WaitForSingleObject(process.hProcess, 30000);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  } else {
    ADD_FAILURE() << "qmhost.exe did not start";
  }
  CloseHandle(out);
  std::vector<std::string> lines;
  {
    std::ifstream transcript("editors_conditions.out");
    for (std::string line; std::getline(transcript, line);) {
      if (!line.empty() && line.back() == '\r') line.pop_back();
      lines.push_back(line);
    }
  }
  for (const char* file : {"editors_conditions.qmt", "editors_conditions.out", "editors_condition_rows.csv"}) {
    std::filesystem::remove(file);
  }
  return lines;
}

// A block's lines as the lines of a task file's step.
std::string StepLines(const std::u16string& block) {
  std::string text = Utf16ToUtf8(block);
  std::string lines;
  for (char c : text)
    if (c != '\r') lines += c;
  return lines;
}

// The transcript's "set" lines of variable `name`, their values as qmhost quotes them.
std::vector<std::string> SetValues(const std::vector<std::string>& transcript, const std::string& name) {
  std::vector<std::string> values;
  const std::string prefix = "  set \"" + name + "\" = ";
  for (const auto& line : transcript) {
    if (line.rfind(prefix, 0) == 0) values.push_back(line.substr(prefix.size()));
  }
  return values;
}

// The conditions dialog's source: the rows file.
void ChooseRowsFile(HWND w) {
  test::SelectTab(w, 1);
  test::Click(ByCaption(w, Wide(SourceFrame::kSourceItems[1])));
  test::Type(Labelled(w, SourceFrame::kFileNameLabel), kConditionRowsFile);
}

// Three conditions built through the Data Loop editor (button, Insert key and
// the "{V}" button; Ctrl+Enter and double-click editing, Delete removing,
// the beeps with nothing selected), the returned block reopened, then run:
// the loop visits the rows that pass all three.
TEST_F(Editors, DataLoopBuildsItsConditionsAndTheLoopVisitsTheRowsTheyPass) {
  const auto& buttons = DataLoopEditor::kCommandCaptions;
  auto set = [](DataLoopEditor& m) {
    m.rowNumberVar = u"n";
    m.rowVar = u"row";
    m.conditions.conditions = {kPattern, kSubstring, kVariableColumn};
    m.pages.source.source = CsvSource::File;
    m.pages.source.fileName = Utf16(kConditionRowsFile);
  };
  for (int scale : {100, 150}) {
    DeleteFileW(ui::PlacementStorePath().c_str());  // the columns as built at this scale
    PluginUnderTest::SetScale(scale);
    PluginUnderTest::SetPickedVariable(u"{col}");
    const std::string shot = "data_loop_" + std::to_string(scale);
    std::optional<std::u16string> written;
    test::DriveDialog([&] { written = Plugin().Configure(kDataLoopIndex, u""); }, [&] {
      HWND w = test::WaitForWindow(Wide(DataLoopEditor::kCaption));
      ASSERT_TRUE(w);
      HWND list = ConditionsList(w);
      ShootPages(w, shot, 2);
      test::Click(ByCaption(w, L"OK"));
      EXPECT_EQ(test::LastBeep(w), static_cast<int>(MB_ICONEXCLAMATION));
      EXPECT_EQ(test::BalloonText(w), CheckMessage<DataLoopEditor>());
      test::Type(Labelled(w, DataLoopEditor::kRowNumberLabel), L"n");
      test::Type(Labelled(w, DataLoopEditor::kRowLabel), L"row");

      test::ClickLater(ByCaption(w, Wide(buttons[0])));
      FillCondition(L"Add condition", kPattern, shot + "_condition_add");
      // Insert adds; the substring first goes in wrong and is edited below.
      test::Focus(list);
      test::Press(w, VK_INSERT);
      FillCondition(L"Add condition", {u"3", u"q", false, false});
      // The variable column through "{V}" at the column field's caret.
      test::ClickLater(ByCaption(w, Wide(buttons[0])));
      HWND e = test::WaitForWindow(L"Add condition");
      ASSERT_TRUE(e);
      HWND column = Labelled(e, ConditionEditor::kColumnLabel);
      test::Focus(column);
      test::Click(ByCaption(e, L"{V}"));
      EXPECT_EQ(test::Text(column), L"{col}");
      test::Type(Labelled(e, ConditionEditor::kTextLabel), L"0");
      test::Click(ByCaption(e, L"OK"));
      EXPECT_TRUE(test::WaitUntilClosed(e));
      ASSERT_EQ(ListView_GetItemCount(list), 3);

      // Nothing selected: Delete and Ctrl+Enter only beep.
      test::SelectItem(list, -1);
      test::Focus(list);
      for (const bool ctrl : {false, true}) {
        RemovePropW(w, L"qmcsv.lastBeep");
        test::Press(w, ctrl ? VK_RETURN : VK_DELETE, ctrl);
        EXPECT_EQ(test::LastBeep(w), static_cast<int>(MB_OK)) << ctrl;
      }
      EXPECT_FALSE(FindWindowW(nullptr, L"Edit condition"));
      EXPECT_TRUE(IsWindowVisible(w));  // Ctrl+Enter is not the OK button
      EXPECT_EQ(ListView_GetItemCount(list), 3);
      // Ctrl+Enter edits the selected row.
      test::SelectItem(list, 1);
      test::Press(w, VK_RETURN, true);
      FillCondition(L"Edit condition", kSubstring, shot + "_condition_edit");
      // A double-click opens a pattern's editor with the pattern's label; Cancel keeps it.
      test::DoubleClickItemLater(list, 0);
      e = test::WaitForWindow(L"Edit condition");
      ASSERT_TRUE(e);
      EXPECT_EQ(test::Text(Labelled(e, ConditionEditor::kPatternLabel)), Wide(kPattern.expression));
      test::Click(ByCaption(e, L"Cancel"));
      EXPECT_TRUE(test::WaitUntilClosed(e));
      // Delete removes the selected row without asking.
      test::ClickLater(ByCaption(w, Wide(buttons[0])));
      FillCondition(L"Add condition", {u"9", u"gone", false, false});
      test::SelectItem(list, 3);
      test::Focus(list);
      test::Press(w, VK_DELETE);
      ASSERT_EQ(ListView_GetItemCount(list), 3);
      EXPECT_EQ(RowOf(list, 0), ShownRow(kPattern));
      EXPECT_EQ(RowOf(list, 1), ShownRow(kSubstring));
      EXPECT_EQ(RowOf(list, 2), ShownRow(kVariableColumn));

      ChooseRowsFile(w);
      ShootPages(w, shot + "_file", 3);
      test::Click(ByCaption(w, L"OK"));
      EXPECT_TRUE(test::WaitUntilClosed(w));
    });
    ASSERT_TRUE(written) << scale;
    EXPECT_EQ(*written, ModelBlock<DataLoopEditor>(set)) << scale;
  }
  PluginUnderTest::SetScale(100);
  const std::u16string block = ModelBlock<DataLoopEditor>(set);

  // Reopened, the editor shows the conditions as they were entered.
  test::DriveDialog([&] { EXPECT_FALSE(Plugin().Configure(kDataLoopIndex, block)); }, [&] {
    HWND w = test::WaitForWindow(Wide(DataLoopEditor::kCaption));
    ASSERT_TRUE(w);
    HWND list = ConditionsList(w);
    ASSERT_EQ(ListView_GetItemCount(list), 3);
    EXPECT_EQ(RowOf(list, 0), ShownRow(kPattern));
    EXPECT_EQ(RowOf(list, 1), ShownRow(kSubstring));
    EXPECT_EQ(RowOf(list, 2), ShownRow(kVariableColumn));
    // The list's context menu (from the keyboard's menu key) offers the three
    // commands; its last entry removes the selected row.
    test::SelectItem(list, 1);
    PostMessageW(w, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list), MAKELPARAM(-1, -1));
    HWND menu = nullptr;
    for (int i = 0; i < 200 && !menu; ++i, Sleep(10)) {
      menu = FindWindowW(L"#32768", nullptr);
      if (menu && !IsWindowVisible(menu)) menu = nullptr;
    }
    ASSERT_TRUE(menu);
    const auto entries = reinterpret_cast<HMENU>(SendMessageW(menu, MN_GETHMENU, 0, 0));
    ASSERT_EQ(GetMenuItemCount(entries), 3);
    for (int i = 0; i < 3; ++i) {
      wchar_t text[64] = {};
      GetMenuStringW(entries, static_cast<UINT>(i), text, 64, MF_BYPOSITION);
      EXPECT_EQ(std::wstring(text), Wide(ConditionList::kMenuCaptions[static_cast<size_t>(i)]));
    }
    test::Press(menu, VK_UP);
    test::Press(menu, VK_RETURN);
    for (int i = 0; i < 200 && ListView_GetItemCount(list) != 2; ++i) Sleep(10);
    ASSERT_EQ(ListView_GetItemCount(list), 2);
    EXPECT_EQ(RowOf(list, 1), ShownRow(kVariableColumn));
    test::Click(ByCaption(w, L"Cancel"));
    EXPECT_TRUE(test::WaitUntilClosed(w));
  });

  // Rows 1 and 4 pass all three; row 2 fails the case, 3 the pattern, 5 the column from {col}.
  const auto transcript = RunSteps("[A_CSV_LOOP]\n" + StepLines(block) + "\n[end-loop]\n");
  EXPECT_EQ(SetValues(transcript, "n"), (std::vector<std::string>{"\"1\"", "\"4\""}));
  EXPECT_EQ(SetValues(transcript, "row"),
            (std::vector<std::string>{R"("10,\"a,\"\"b\"\"\",y")", R"("40,\"a,b\",yy")"}));
}

// The Filter Data editor refuses an empty list, builds two conditions in OR
// mode that delete the rows either matches, and the step leaves the others.
TEST_F(Editors, FilterDataBuildsItsConditionsAndTheStepDeletesTheRowsTheyMatch) {
  const auto& buttons = FilterDataEditor::kCommandCaptions;
  auto set = [](FilterDataEditor& m) {
    m.deleteMatching = true;
    m.conditions.orMode = true;
    m.conditions.conditions = {kVariableColumn, kDash};
    m.pages.source.source = CsvSource::File;
    m.pages.source.fileName = Utf16(kConditionRowsFile);
  };
  std::u16string block;
  for (int scale : {100, 150}) {
    DeleteFileW(ui::PlacementStorePath().c_str());  // the columns as built at this scale
    PluginUnderTest::SetScale(scale);
    const std::string shot = "filter_data_" + std::to_string(scale);
    std::optional<std::u16string> written;
    test::DriveDialog([&] { written = Plugin().Configure(kFilterDataIndex, u""); }, [&] {
      HWND w = test::WaitForWindow(Wide(FilterDataEditor::kCaption));
      ASSERT_TRUE(w);
      HWND list = ConditionsList(w);
      ShootPages(w, shot, 2);
      test::Click(ByCaption(w, L"OK"));
      EXPECT_EQ(test::BalloonText(w), CheckMessage<FilterDataEditor>());
      test::Click(ByCaption(w, Wide(FilterDataEditor::kDeleteItems[1])));
      HWND mode = GetWindow(ByCaption(w, Wide(FilterDataEditor::kFilterGroup)), GW_HWNDNEXT);
      test::Choose(mode, 1);
      test::ClickLater(ByCaption(w, Wide(buttons[0])));
      FillCondition(L"Add condition", kVariableColumn);
      test::Focus(list);
      test::Press(w, VK_INSERT);
      FillCondition(L"Add condition", kDash);
      ASSERT_EQ(ListView_GetItemCount(list), 2);
      ChooseRowsFile(w);
      ShootPages(w, shot + "_file", 3);
      test::Click(ByCaption(w, L"OK"));
      EXPECT_TRUE(test::WaitUntilClosed(w));
    });
    ASSERT_TRUE(written) << scale;
    block = ModelBlock<FilterDataEditor>(set);
    EXPECT_EQ(*written, block) << scale;
  }
  PluginUnderTest::SetScale(100);
  // Deleted: rows 1, 2 and 4 (a 0 in column 1) and 3 (the pattern); left: 5.
  const auto transcript = RunSteps("[A_CSV_FILTER]\n" + StepLines(block) +
                                   "\n[A_CSV_SAVE]\nsavetovariable=1\nsavevariable=out\n");
  EXPECT_EQ(SetValues(transcript, "out"), (std::vector<std::string>{R"("51;a,b;y\r\n")"}));
}

// Opens the Data Loop editor on `block`, runs `script` on it and cancels it.
void WithDataLoop(const std::u16string& block, const std::function<void(HWND)>& script) {
  test::DriveDialog([&] { EXPECT_FALSE(Plugin().Configure(kDataLoopIndex, block)); }, [&] {
    HWND w = test::WaitForWindow(Wide(DataLoopEditor::kCaption));
    ASSERT_TRUE(w);
    script(w);
    test::Press(w, VK_ESCAPE);
    EXPECT_TRUE(test::WaitUntilClosed(w));
  });
}

// Opens the condition editor from the Data Loop editor's "Add..." and runs
// `script` on it; Cancel closes both.
void WithConditionEditor(const std::function<void(HWND)>& script) {
  WithDataLoop(u"", [&](HWND w) {
    test::ClickLater(ByCaption(w, Wide(DataLoopEditor::kCommandCaptions[0])));
    HWND e = test::WaitForWindow(L"Add condition");
    ASSERT_TRUE(e);
    script(e);
    test::Click(ByCaption(e, L"Cancel"));
    EXPECT_TRUE(test::WaitUntilClosed(e));
  });
}

// Tab runs column, expression, the two boxes, OK, Cancel and only then "{V}".
TEST_F(Editors, ConditionEditorTabsThroughItsFieldsBeforeInsertVariable) {
  WithConditionEditor([](HWND e) {
    HWND column = Labelled(e, ConditionEditor::kColumnLabel);
    const HWND order[] = {Labelled(e, ConditionEditor::kTextLabel),
                          ByCaption(e, Wide(ConditionEditor::kUseRegex)),
                          ByCaption(e, Wide(ConditionEditor::kCaseSensitive)),
                          ByCaption(e, L"OK"),
                          ByCaption(e, L"Cancel"),
                          ByCaption(e, L"{V}"),
                          column};
    test::Focus(column);
    for (size_t i = 0; i < std::size(order); ++i) {
      test::Press(e, VK_TAB);
      EXPECT_EQ(test::Focused(e), order[i]) << "Tab " << i + 1;
    }
  });
}

// Every access key of the condition editor is its own, and the expression's
// label keeps one, leading to the field, whichever text the
// regular-expression box gives it.
TEST_F(Editors, ConditionEditorExpressionLabelKeepsAnAccessKeyOfItsOwn) {
  WithConditionEditor([](HWND e) {
    HWND column = Labelled(e, ConditionEditor::kColumnLabel);
    HWND expression = Labelled(e, ConditionEditor::kTextLabel);
    HWND label = GetWindow(expression, GW_HWNDPREV);
    for (const auto caption : {ConditionEditor::kTextLabel, ConditionEditor::kPatternLabel}) {
      EXPECT_EQ(Labelled(e, caption), expression);
      std::wstring keys;
      for (HWND c = GetWindow(e, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
        if (const wchar_t key = keyboard::KeyOf(test::Text(c))) keys += key;
      }
      for (size_t i = 0; i < keys.size(); ++i) EXPECT_EQ(keys.find(keys[i], i + 1), std::wstring::npos) << keys;
      const wchar_t key = keyboard::KeyOf(test::Text(label));
      EXPECT_TRUE(key) << keyboard::Narrow(test::Text(label));
      test::Focus(column);
      test::PressAlt(e, key);
      EXPECT_EQ(test::Focused(e), expression) << keyboard::Narrow(test::Text(label));
      test::Click(ByCaption(e, Wide(ConditionEditor::kUseRegex)));
    }
    test::Screenshot(e, ScreenshotPath("data_loop_100_condition_keys"));
  });
}

// A double-click below the conditions clears the selection and asks to edit
// nothing: the plain beep, no editor.
TEST_F(Editors, DoubleClickBelowTheConditionsBeeps) {
  const auto block = ModelBlock<DataLoopEditor>([](DataLoopEditor& m) {
    m.rowNumberVar = u"n";
    m.conditions.conditions = {kPattern};
  });
  WithDataLoop(block, [](HWND w) {
    HWND list = ConditionsList(w);
    ASSERT_EQ(ListView_GetItemCount(list), 1);
    test::SelectItem(list, 0);
    EXPECT_EQ(test::LastBeep(w), -1);
    test::DoubleClickBelowRowsLater(list);
    Sleep(300);
    EXPECT_EQ(test::LastBeep(w), static_cast<int>(MB_OK));
    EXPECT_FALSE(FindWindowW(nullptr, L"Edit condition"));
    EXPECT_EQ(ListView_GetItemCount(list), 1);
  });
}

}  // namespace
}  // namespace qm
