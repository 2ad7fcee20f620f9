// The frame every configuration dialog is built on: a modal window made from
// an empty in-memory template, its controls created in tab order (a label
// right before the control it names, so mnemonics and UI automation find the
// control by its label), laid out in pixels designed at 100% and scaled by the
// host's scale, with tab pages, the failed-check report (beep, page switch,
// balloon at the control's centre), "{V}" insertion and a remembered
// placement.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "dialogs/dialog_check.h"

namespace qm::ui {

// A rectangle in pixels at 100% scale, relative to the dialog's client area.
struct Box {
  int x = 0, y = 0, w = 0, h = 0;
};

// How a control follows the dialog when the user resizes it.
enum Anchor : unsigned { kAnchorNone = 0, kStretchRight = 1, kStretchDown = 2, kFollowRight = 4, kFollowDown = 8 };


// Control ids the frame itself uses.
enum : int { kIdTabs = 900, kIdInsertVariable = 901 };

class DialogWindow {
 public:
  // `placementName` names the dialog's section in the placement store.
  DialogWindow(std::wstring caption, std::wstring placementName, int width, int height, int scale);
  virtual ~DialogWindow() = default;
  DialogWindow(const DialogWindow&) = delete;
  DialogWindow& operator=(const DialogWindow&) = delete;

  // Runs the dialog modally; true when it closed with OK.
  bool RunModal(HWND owner);

  HWND Handle() const { return window_; }
  // The dialog's help topic (0: none), set on its window when it opens.
  void SetHelpContext(DWORD topic) { helpContext_ = topic; }
  int Scale() const { return scale_; }
  int Px(int pixelsAt100) const { return MulDiv(pixelsAt100, scale_, 100); }

  // ---- building (from Build, by the dialog and the frame views it holds) ----
  HWND Add(const wchar_t* windowClass, const wchar_t* text, DWORD style, Box box, int id = 0, unsigned anchor = 0,
           DWORD exStyle = 0);
  HWND Label(const wchar_t* text, Box box, unsigned anchor = 0);
  HWND Edit(Box box, int id, unsigned anchor = kStretchRight, DWORD extra = 0);
  HWND Memo(Box box, int id, unsigned anchor = kStretchRight | kStretchDown);
  HWND Check(const wchar_t* text, Box box, int id);
  HWND Radio(const wchar_t* text, Box box, int id, bool firstOfGroup);
  HWND DropList(Box box, int id, const std::vector<std::wstring>& items, unsigned anchor = 0);
  HWND EditableList(Box box, int id, const std::vector<std::wstring>& items, unsigned anchor = 0);
  HWND Button(const wchar_t* text, Box box, int id, unsigned anchor = 0);
  HWND Group(const wchar_t* text, Box box, unsigned anchor = kStretchRight);
  // The OK and Cancel buttons at the bottom right, and "{V}" at the bottom
  // left, in that tab order after every field.
  void AddDialogButtons(bool insertVariable);

  // ---- tab pages ----
  // A tab control over `box`; then each BeginPage starts a page whose
  // controls are created until the next one.
  void AddTabs(Box box);
  void BeginPage(const wchar_t* title);
  // Box of a page's client area, at 100%, for laying out its controls.
  Box PageArea() const;
  void SetPageVisible(int page, bool visible);
  void ShowPage(int page);
  int CurrentPage() const;
  int PageOf(HWND control) const;
  // Shows or hides a control within its page (a hidden control stays hidden
  // whichever page is shown).
  void SetVisible(HWND control, bool visible);

  // ---- the failed check ----
  // Beeps, shows the page holding the control (a hidden page too), focuses
  // it and shows the message as a balloon at its centre for three seconds.
  // An empty message shows no balloon.
  void ReportFailure(HWND control, const std::wstring& message, Beep beep);
  // Sounds a beep and records it on the window (a refused command).
  void Sound(Beep beep);

  // Texts of controls.
  static std::wstring TextOf(HWND control);
  static void SetText(HWND control, const std::wstring& text);
  // Changes a label's text once the dialog is built, keeping it an access
  // key that no other caption on its page has.
  void SetLabel(HWND label, const std::wstring& text);

 protected:
  // Creates the controls, in tab order. Called once the window exists.
  virtual void Build() = 0;
  // Fills the controls and sets their states; after Build.
  virtual void Fill() {}
  // OK was pressed: check, and on success write back; true closes the dialog.
  virtual bool Confirm() = 0;
  virtual void Command(int /*id*/, int /*code*/, HWND /*control*/) {}
  virtual LRESULT Notify(const NMHDR& /*header*/) { return 0; }
  // A context menu was asked for over `control`, at screen point `at`
  // ({-1, -1} from the keyboard).
  virtual void ContextMenu(HWND /*control*/, POINT /*at*/) {}
  // The list-column widths to remember (list view handles); none by default.
  virtual std::vector<HWND> RememberedLists() const { return {}; }

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam);
  void Create();
  void Relayout();
  void InsertTab(const std::wstring& title);
  // Gives the tab captions, "{V}" and each page's labels and buttons access
  // keys unique among what is shown together.
  void AssignAccessKeys();
  // Page keys of the modal loop: Ctrl+Tab, Ctrl+Shift+Tab, Ctrl+PgDn,
  // Ctrl+PgUp and Alt with a tab's key; true when the message was one.
  static LRESULT CALLBACK PageKeyHook(int code, WPARAM wParam, LPARAM lParam);
  bool PageKey(const MSG& message);
  void ShowPageByKeyboard(int page);
  void InsertVariable();
  bool RestorePlacement();
  void Centre();
  void SavePlacement();

  struct Placed {
    HWND window;
    Box box;
    unsigned anchor;
    int page;  // -1: on every page
    bool hidden;
  };
  struct Page {
    std::wstring title;
    bool visible = true;
  };

  std::wstring caption_;
  std::wstring placementName_;
  int width_, height_, scale_;
  HWND window_ = nullptr;
  HFONT font_ = nullptr;
  HWND tabs_ = nullptr;
  Box tabsBox_{};
  HWND balloon_ = nullptr;
  HWND lastEdit_ = nullptr;  // the text field "{V}" inserts into
  std::vector<Placed> placed_;
  std::vector<Page> pages_;
  int buildingPage_ = -1;
  int shownPage_ = 0;
  DWORD helpContext_ = 0;
  bool maximizeWhenShown_ = false;
  std::vector<std::u16string> pageKeys_;  // the access keys in use on each page
};

}  // namespace qm::ui
