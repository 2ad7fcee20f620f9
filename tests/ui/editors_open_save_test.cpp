// The editors that read and write a table: Open Data and Merge Data with
// their source and format pages, Save Data with its target and its format
// page (shown only when the format changes, and brought back by a failed
// check), the format's custom character and the "Skip first lines" spinner.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "beep_recorder_win32.h"
#include "core/messages.h"
#include "dialogs/merge_editor.h"
#include "dialogs/open_data_editor.h"
#include "dialogs/save_data_editor.h"
#include "editors_test_support_win32.h"
#include "ui/text_win32.h"

namespace qm::test {
namespace {

using ui::Wide;

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
        EXPECT_EQ(test::LastBeep(), static_cast<int>(MB_ICONEXCLAMATION));
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

}  // namespace
}  // namespace qm::test
