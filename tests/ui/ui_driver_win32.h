// Drives a real dialog from a second thread as a user would: finds controls by
// their labels, types, clicks, presses keys, reads the balloon, and takes
// screenshots as PNG files.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

namespace qm::test {

// Runs `script` on a driver thread while `open` runs the modal dialog on
// this one; the script's failures are reported through GoogleTest.
void DriveDialog(const std::function<void()>& open, const std::function<void()>& script);

// A visible top-level window of this process with the caption; null after
// a few seconds.
HWND WaitForWindow(const std::wstring& caption);
// A visible dialog (class "#32770") that `owner` owns, such as a system
// file chooser; null after a few seconds.
HWND WaitForOwnedDialog(HWND owner);
// Waits until the window is gone; false when it stays.
bool WaitUntilClosed(HWND window);

// The control a label names: the first tab stop after the label among the
// dialog's children. The label's text is compared without its "&" mnemonic
// marker and without trailing blanks.
HWND ByLabel(HWND dialog, const std::wstring& label);
// A button, check box or radio button by its own caption (without "&").
HWND ByCaption(HWND dialog, const std::wstring& caption);

std::wstring Text(HWND control);
// Replaces a text field's content as typing would (the field is notified).
void Type(HWND field, const std::wstring& text);
// Types the characters one by one at the field's caret, as the keyboard
// delivers them (so the field's own limits apply).
void TypeKeys(HWND field, const std::wstring& text);
void Click(HWND button);
// Clicks without waiting for the click's handling: for a button that opens a
// modal dialog of its own.
void ClickLater(HWND button);
// Selects a list view's item (-1: none), as a click on it would.
void SelectItem(HWND listView, int item);
// Double-clicks a list view's item without waiting for its handling.
void DoubleClickItemLater(HWND listView, int item);
// Double-clicks the empty part of a list view below its rows (the first click
// of the two clears the selection) without waiting for its handling.
void DoubleClickBelowRowsLater(HWND listView);
void Choose(HWND comboBox, int index);
bool IsChecked(HWND button);
// A key press (with Ctrl, and Shift, held when asked) into the dialog's
// focused control, through the dialog's own message loop.
void Press(HWND dialog, WORD key, bool ctrl = false, bool shift = false);
// Alt with a letter or digit, as the keyboard delivers it to the focused control.
void PressAlt(HWND dialog, wchar_t key);
// The control with the keyboard focus in the dialog's thread.
HWND Focused(HWND dialog);
// A control's text as the user reads it: without the "&" of its access key
// and without trailing blanks.
std::wstring CaptionOf(HWND control);
void Focus(HWND control);

// The tab page the dialog shows (index among the visible tabs).
int ShownTab(HWND dialog);
// Clicks the tab of that index.
void SelectTab(HWND dialog, int index);
// The text of the dialog's visible balloon hint; empty when none is shown.
std::wstring BalloonText(HWND dialog);

// Saves what the screen shows of the window (and the popups over it) as a PNG.
bool Screenshot(HWND window, const std::string& path);

}  // namespace qm::test
