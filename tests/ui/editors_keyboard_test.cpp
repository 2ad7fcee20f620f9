// Every editor walked by keyboard: tab order, access keys, page keys.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "editors_test_support_win32.h"

namespace qm::test {
namespace {

namespace keyboard {

using Names = std::vector<std::wstring>;

Names Join(std::initializer_list<Names> parts) {
  Names all;
  for (const auto& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

// The frames' controls in tab order, as the next test names them.
const Names kFormat = {L"Delimiter:",
                       L"Character:",
                       L"Quote character:",
                       L"Strict delimiter (space is not a delimiter)",
                       L"Reset to standard format",
                       L"Reset to Excel format"};
const Names kFileSource = {L"File name:",
                           L"...",
                           L"Encoding:",
                           L"Skip first lines:",
                           L"Skip empty lines",
                           L"Skip lines starting with:",
                           L"Skip lines starting with:",
                           L"First row is column headers"};
const Names kSource = Join({{L"Prev. CSV action", L"File", L"Text"}, kFileSource});
const Names kOpenSource = Join({{L"File", L"Text"}, kFileSource});
const Names kTarget = {L"Save to variable:", L"Save to variable:",       L"Save to file:", L"Save to file:", L"...",
                       L"Encoding:",         L"Keep original CSV format"};

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
    if (IsClass(w, L"Button"))
      names.push_back(test::CaptionOf(w));
    else
      names.push_back(before && (IsClass(before, L"Static") || IsClass(before, L"Button")) ? test::CaptionOf(before)
                                                                                           : L"");
  }
  return names;
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
    const bool label =
        IsClass(w, L"Static") && next && !IsClass(next, L"Static") && (GetWindowLongPtrW(next, GWL_STYLE) & WS_TABSTOP);
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
      {kInformationIndex,
       L"CSV Get Data Information",
       file,
       {{L"Save record count to variable:", L"Save column count to variable:"}, kSource, kFormat}},
      {kAddColumnIndex,
       L"CSV Add Column",
       file,
       {{L"Action:", L"Insert at (from 1):", L"Column name:", L"Fill mode:", L"Column value:"}, kSource, kFormat}},
      {kRemoveColumnsIndex,
       L"CSV Remove Columns",
       file,
       {{L"One or more column numbers (from 1, comma separated):"}, kSource, kFormat}},
      {kSortIndex,
       L"CSV Sort by Column",
       file,
       {{L"Sort by column (from 1):", L"Sort direction:", L"Sort mode:", L"Case sensitive"}, kSource, kFormat}},
      {kMoveColumnIndex, L"CSV Move Column", file, {{L"Column number (from 1):", L"Move to:"}, kSource, kFormat}},
      {kReadCellsIndex,
       L"CSV Read Cells",
       file,
       {{L"Cells list:", L"Add...", L"Edit...", L"Remove"}, kSource, kFormat}},
      {kMergeIndex,
       L"CSV Merge Data",
       u"",
       {kOpenSource, kFormat, {L"Raise an error", L"Adjust the number of columns"}}},
      {kRemoveDuplicatesIndex,
       L"CSV Remove Duplicates",
       file,
       {{L"Case sensitive", L"Save number of deleted rows to variable:"}, kSource, kFormat}},
      {kSaveDataIndex, L"CSV Save Data", u"notchangeformat=0\r\n", {kTarget, kFormat}},
      {kDataLoopIndex,
       L"CSV Data Loop",
       file,
       {{L"Save row number to variable:", L"Save current row to a variable:", L"Save format:", L"Filter Options", L"",
         L"Add...", L"Edit...", L"Remove"},
        kSource,
        kFormat}},
      {kFilterDataIndex,
       L"CSV Filter Data",
       file,
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

}  // namespace
}  // namespace qm::test
