// The condition lists of Data Loop and Filter Data: conditions built
// through their editors, the blocks run with qmhost.exe, and the condition
// editor's keyboard.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "beep_recorder_win32.h"
#include "core/utf.h"
#include "dialogs/data_loop_editor.h"
#include "dialogs/filter_data_editor.h"
#include "editors_test_support_win32.h"
#include "ui/text_win32.h"

namespace qm::test {
namespace {

using ui::Utf16;
using ui::Wide;

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
    test::DriveDialog([&] { written = Plugin().Configure(kDataLoopIndex, u""); },
                      [&] {
                        HWND w = test::WaitForWindow(Wide(DataLoopEditor::kCaption));
                        ASSERT_TRUE(w);
                        HWND list = ConditionsList(w);
                        ShootPages(w, shot, 2);
                        test::Click(ByCaption(w, L"OK"));
                        EXPECT_EQ(test::LastBeep(), static_cast<int>(MB_ICONEXCLAMATION));
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
                          test::ForgetBeeps();
                          test::Press(w, ctrl ? VK_RETURN : VK_DELETE, ctrl);
                          EXPECT_EQ(test::LastBeep(), static_cast<int>(MB_OK)) << ctrl;
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
  test::DriveDialog([&] { EXPECT_FALSE(Plugin().Configure(kDataLoopIndex, block)); },
                    [&] {
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
    test::DriveDialog([&] { written = Plugin().Configure(kFilterDataIndex, u""); },
                      [&] {
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
  const auto transcript =
      RunSteps("[A_CSV_FILTER]\n" + StepLines(block) + "\n[A_CSV_SAVE]\nsavetovariable=1\nsavevariable=out\n");
  EXPECT_EQ(SetValues(transcript, "out"), (std::vector<std::string>{R"("51;a,b;y\r\n")"}));
}

// Opens the Data Loop editor on `block`, runs `script` on it and cancels it.
void WithDataLoop(const std::u16string& block, const std::function<void(HWND)>& script) {
  test::DriveDialog([&] { EXPECT_FALSE(Plugin().Configure(kDataLoopIndex, block)); },
                    [&] {
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
        if (const wchar_t key = KeyOf(test::Text(c))) keys += key;
      }
      for (size_t i = 0; i < keys.size(); ++i) EXPECT_EQ(keys.find(keys[i], i + 1), std::wstring::npos) << keys;
      const wchar_t key = KeyOf(test::Text(label));
      EXPECT_TRUE(key) << Narrow(test::Text(label));
      test::Focus(column);
      test::PressAlt(e, key);
      EXPECT_EQ(test::Focused(e), expression) << Narrow(test::Text(label));
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
    EXPECT_EQ(test::LastBeep(), -1);
    test::DoubleClickBelowRowsLater(list);
    Sleep(300);
    EXPECT_EQ(test::LastBeep(), static_cast<int>(MB_OK));
    EXPECT_FALSE(FindWindowW(nullptr, L"Edit condition"));
    EXPECT_EQ(ListView_GetItemCount(list), 1);
  });
}

}  // namespace
}  // namespace qm::test
