// A dialog's list of entries with its three commands (add, edit, remove): a
// report list view, the command buttons in a column at its right, the
// context menu, the shortcuts Insert, Ctrl+Enter and Delete while the list
// has the focus, and a double-click to edit (the selected row; none selected,
// the edit command's beep). The dialog's model
// decides; RunListCommand carries a command out on it.
#pragma once

#include <windows.h>

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/list_commands.h"
#include "platform/beep.h"
#include "ui/dialog_window_win32.h"

namespace qm::ui {

class CommandList {
 public:
  using Captions = std::array<std::u16string_view, 3>;
  using Rows = std::vector<std::vector<std::u16string>>;
  static constexpr int kButtonWidth = 90;

  // Creates the list over `box` less the buttons' column; `widths` are the
  // headings' widths at 100%, the last heading taking what is left. The
  // commands use the ids `firstId` to `firstId` + 2.
  void Build(DialogWindow& dialog, Box box, int firstId, std::span<const std::u16string_view> headings,
             std::span<const int> widths, const Captions& buttons, const Captions& menu);
  // Shows the rows (texts in column order) and selects `select` (-1: none).
  void SetRows(const Rows& rows, int select);
  int Selected() const;
  HWND List() const { return list_; }

  // The command a button or a shortcut sent (as the button's click).
  std::optional<ListCommand> CommandOf(int id, int code) const;
  // A double-click in the list is the edit command.
  std::optional<ListCommand> NotifyCommand(const NMHDR& header) const;
  // The context menu asked for over the list, and the entry chosen.
  std::optional<ListCommand> MenuCommand(HWND control, POINT at) const;

 private:
  static LRESULT CALLBACK Shortcuts(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR self, DWORD_PTR);
  DialogWindow* dialog_ = nullptr;
  HWND list_ = nullptr;
  std::array<HWND, 3> buttons_{};
  Captions menu_{};
  int firstId_ = 0;
};

// Runs `command` on `model` (Refusal, BeginAdd/FinishAdd, BeginEdit/FinishEdit,
// Remove): a refused command beeps; Add and Edit open the entry's editor
// through `edit` (true when it closed with OK); the list then shows
// `rows()` with the added, edited or next row selected.
template <class Model, class Edit, class MakeRows>
void RunListCommand(ListCommand command, Model& model, CommandList& list, Edit&& edit, MakeRows&& rows) {
  const int selected = list.Selected();
  if (const auto beep = model.Refusal(command, selected)) {
    SoundBeep(*beep);
    return;
  }
  int select = selected;
  switch (command) {
    case ListCommand::Add: {
      auto item = model.BeginAdd();
      if (!edit(item)) return;
      model.FinishAdd(item);
      select = static_cast<int>(rows().size()) - 1;
      break;
    }
    case ListCommand::Edit: {
      auto item = model.BeginEdit(selected);
      if (!item || !edit(*item)) return;
      model.FinishEdit(selected, *item);
      break;
    }
    case ListCommand::Remove:
      // The entry now in the removed one's place stays selected, else the last.
      if (!model.Remove(selected)) return;
      select = std::min(selected, static_cast<int>(rows().size()) - 1);
      break;
  }
  list.SetRows(rows(), select);
  SetFocus(list.List());
}

}  // namespace qm::ui
