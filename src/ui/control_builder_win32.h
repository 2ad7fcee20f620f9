// The controls of a dialog, created in tab order (a label right before the
// control it names, so mnemonics and UI automation find the control by its
// label) and laid out in pixels designed at 100%, scaled by the host's scale
// and following the dialog as the user resizes it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace qm::ui {

// A rectangle in pixels at 100% scale, relative to the dialog's client area.
struct Box {
  int x = 0, y = 0, w = 0, h = 0;
};

// How a control follows the dialog when the user resizes it.
enum Anchor : unsigned { kAnchorNone = 0, kStretchRight = 1, kStretchDown = 2, kFollowRight = 4, kFollowDown = 8 };

// Control ids the frame itself uses.
enum : int { kIdTabs = 900, kIdInsertVariable = 901 };

// A control as created: its box at 100%, how it follows a resize, its page
// (-1: on every page) and whether the dialog hid it.
struct PlacedControl {
  HWND window;
  Box box;
  unsigned anchor;
  int page;
  bool hidden;
};

class ControlBuilder {
 public:
  // `width` and `height`: the client area at 100%, the smallest the dialog gets.
  ControlBuilder(int width, int height, int scale);
  virtual ~ControlBuilder();
  ControlBuilder(const ControlBuilder&) = delete;
  ControlBuilder& operator=(const ControlBuilder&) = delete;

  HWND Handle() const { return window_; }
  int Scale() const { return scale_; }
  int Px(int pixelsAt100) const { return MulDiv(pixelsAt100, scale_, 100); }

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
  // left, in that tab order after every field, on every page.
  void AddDialogButtons(bool insertVariable);

  // Texts of controls.
  static std::wstring TextOf(HWND control);
  static void SetText(HWND control, const std::wstring& text);

 protected:
  // The dialog's window exists: controls are created on it, in the font of
  // the system's messages at the dialog's scale.
  void Attach(HWND window);
  // The window's frame for the designed client area at this scale: the
  // dialog's size when it opens and the smallest the user can make it.
  SIZE DesignedFrame() const;
  // Moves and sizes every control for the client area the window has now.
  void Relayout();

  // The controls in the order they were created, their tab order.
  std::vector<PlacedControl>& Controls() { return placed_; }
  const std::vector<PlacedControl>& Controls() const { return placed_; }
  HFONT Font() const { return font_; }
  // The page the controls created from now on belong to (-1: every page).
  void BuildOnPage(int page) { buildingPage_ = page; }

 private:
  int width_, height_, scale_;
  HWND window_ = nullptr;
  HFONT font_ = nullptr;
  std::vector<PlacedControl> placed_;
  int buildingPage_ = -1;
};

}  // namespace qm::ui
