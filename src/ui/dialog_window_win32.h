// The frame every configuration dialog is built on: a modal window made from
// an empty in-memory template, whose window procedure leads each message to
// the frame's parts (controls laid out at the host's scale, tab pages,
// access keys, the failed-check report with its balloon, "{V}" insertion
// and the remembered placement) and to the dialog's own handlers.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "dialogs/dialog_check.h"
#include "ui/access_keys_win32.h"
#include "ui/dialog_placement_win32.h"
#include "ui/failure_balloon_win32.h"
#include "ui/tab_pages_win32.h"

namespace qm::ui {

class DialogWindow : public TabPages {
 public:
  // `placementName` names the dialog's section in the placement store;
  // `width` and `height` are its client area at 100%.
  DialogWindow(std::wstring caption, std::wstring placementName, int width, int height, int scale);

  // Runs the dialog modally; true when it closed with OK.
  bool RunModal(HWND owner);

  // The dialog's help topic (0: none), set on its window when it opens.
  void SetHelpContext(DWORD topic) { helpContext_ = topic; }

  // ---- the failed check ----
  // Beeps, shows the page holding the control (a hidden page too), focuses
  // it and shows the message as a balloon at its centre for three seconds.
  // An empty message shows no balloon.
  void ReportFailure(HWND control, const std::wstring& message, Beep beep);

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
  // The dialog procedure: leads each message to the frame its window belongs to.
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  INT_PTR HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);
  // The page keys, seen in the modal loop before the focused control sees them.
  static LRESULT CALLBACK PageKeyHook(int code, WPARAM wParam, LPARAM lParam);
  void Create();
  bool ButtonCommand(int id, int code, HWND control);
  void InsertVariable();

  std::wstring caption_;
  DWORD helpContext_ = 0;
  CaptionKeys keys_;
  FailureBalloon balloon_;
  DialogPlacement placement_;
  HWND lastEdit_ = nullptr;  // the text field "{V}" inserts into
};

}  // namespace qm::ui
