// The tab pages of a dialog: a tab control over part of the dialog, each
// page's controls shown only while its tab is selected, pages left out of
// the strip and brought back, the page keys of the keyboard (Ctrl+Tab,
// Ctrl+Shift+Tab, Ctrl+PgDn, Ctrl+PgUp, Alt with a tab's key) and the page's
// own background colour behind its controls.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "ui/control_builder_win32.h"

namespace qm::ui {

class TabPages : public ControlBuilder {
 public:
  using ControlBuilder::ControlBuilder;

  // A tab control over `box`; then each BeginPage starts a page whose
  // controls are created until the next one.
  void AddTabs(Box box);
  void BeginPage(const wchar_t* title);
  // Box of a page's client area, at 100%, for laying out its controls.
  Box PageArea() const;
  void SetPageVisible(int page, bool visible);
  void ShowPage(int page);
  int CurrentPage() const { return shownPage_; }
  // The page of a control or of a window within it; -1 on every page.
  int PageOf(HWND control) const;
  // Shows or hides a control within its page (a hidden control stays hidden
  // whichever page is shown).
  void SetVisible(HWND control, bool visible);

 protected:
  // The tab captions, in page order, shown or not; new captions for them.
  std::vector<std::wstring> PageTitles() const;
  void SetPageTitles(const std::vector<std::wstring>& titles);
  // A message of the dialog's modal loop: true when it was a page key, and
  // the page it leads to is shown.
  bool PageKey(const MSG& message);
  // A notification of the tab control: true when it was one (a tab chosen).
  bool TabNotify(const NMHDR& header);
  // The dialog's background: the button face, and the window colour inside
  // the tab control's body.
  void PaintBackground(HDC dc) const;
  // The brush behind a label, check box or group box on a page (its text
  // coloured as the control is enabled); null for a control on no page.
  HBRUSH PageColour(HWND control, HDC dc) const;

 private:
  struct Page {
    std::wstring title;
    bool visible = true;
  };
  void FillStrip();
  void InsertTab(const std::wstring& title);
  void ShowPageByKeyboard(int page);

  HWND tabs_ = nullptr;
  Box tabsBox_{};
  std::vector<Page> pages_;
  int shownPage_ = 0;
};

}  // namespace qm::ui
