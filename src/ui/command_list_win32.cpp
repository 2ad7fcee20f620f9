#include "ui/command_list_win32.h"

#include <commctrl.h>

#include <numeric>

#include "ui/text_win32.h"

namespace qm::ui {

void CommandList::Build(DialogWindow& d, Box box, int firstId, std::span<const std::u16string_view> headings,
                        std::span<const int> widths, const Captions& buttons, const Captions& menu) {
  dialog_ = &d;
  firstId_ = firstId;
  menu_ = menu;
  const int listWidth = box.w - kButtonWidth - 8;
  list_ = d.Add(WC_LISTVIEWW, L"", WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
                Box{box.x, box.y, listWidth, box.h}, 0, kStretchRight | kStretchDown, WS_EX_CLIENTEDGE);
  ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
  // The last column takes the rest, less room for a vertical scroll bar.
  const int fixed = std::accumulate(widths.begin(), widths.end(), 0);
  for (size_t c = 0; c < headings.size(); ++c) {
    std::wstring heading = Wide(headings[c]);
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.cx = d.Px(c < widths.size() ? widths[c] : std::max(50, listWidth - fixed - 24));
    column.pszText = heading.data();
    SendMessageW(list_, LVM_INSERTCOLUMNW, c, reinterpret_cast<LPARAM>(&column));
  }
  for (size_t i = 0; i < buttons.size(); ++i) {
    buttons_[i] =
        d.Button(Wide(buttons[i]).c_str(), Box{box.x + box.w - kButtonWidth, box.y + int(i) * 32, kButtonWidth, 25},
                 firstId + int(i), kFollowRight);
  }
  SetWindowSubclass(list_, &CommandList::Shortcuts, reinterpret_cast<UINT_PTR>(this), 0);
}

void CommandList::SetRows(const Rows& rows, int select) {
  ListView_DeleteAllItems(list_);
  for (size_t i = 0; i < rows.size(); ++i) {
    for (size_t c = 0; c < rows[i].size(); ++c) {
      std::wstring text = Wide(rows[i][c]);
      LVITEMW item{};
      item.mask = LVIF_TEXT;
      item.iItem = static_cast<int>(i);
      item.iSubItem = static_cast<int>(c);
      item.pszText = text.data();
      SendMessageW(list_, c == 0 ? LVM_INSERTITEMW : LVM_SETITEMTEXTW, i, reinterpret_cast<LPARAM>(&item));
    }
  }
  if (select >= 0 && select < static_cast<int>(rows.size())) {
    ListView_SetItemState(list_, select, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(list_, select, FALSE);
  }
}

int CommandList::Selected() const { return ListView_GetNextItem(list_, -1, LVNI_SELECTED); }

std::optional<ListCommand> CommandList::CommandOf(int id, int code) const {
  if (code != BN_CLICKED || id < firstId_ || id > firstId_ + 2) return std::nullopt;
  return ListCommand(id - firstId_);
}

std::optional<ListCommand> CommandList::NotifyCommand(const NMHDR& header) const {
  // Anywhere in the list: below the rows the first click has cleared the
  // selection, and the edit command refuses with its beep.
  if (header.hwndFrom != list_ || header.code != NM_DBLCLK) return std::nullopt;
  return ListCommand::Edit;
}

std::optional<ListCommand> CommandList::MenuCommand(HWND control, POINT at) const {
  if (control != list_) return std::nullopt;
  if (at.x == -1 && at.y == -1) {
    RECT r{};
    GetWindowRect(list_, &r);
    at = POINT{r.left + dialog_->Px(10), r.top + dialog_->Px(30)};
  }
  HMENU menu = CreatePopupMenu();
  for (size_t i = 0; i < menu_.size(); ++i) {
    AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(firstId_) + i, Wide(menu_[i]).c_str());
  }
  const int chosen = TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, 0, dialog_->Handle(), nullptr);
  DestroyMenu(menu);
  return CommandOf(chosen, BN_CLICKED);
}

LRESULT CALLBACK CommandList::Shortcuts(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR self,
                                        DWORD_PTR) {
  const bool ctrl = GetKeyState(VK_CONTROL) < 0;
  switch (message) {
    case WM_GETDLGCODE: {
      // Ctrl+Enter is the list's own key, not the dialog's default button.
      const auto* msg = reinterpret_cast<const MSG*>(lParam);
      if (msg && msg->message == WM_KEYDOWN && msg->wParam == VK_RETURN && ctrl) {
        return DefSubclassProc(list, message, wParam, lParam) | DLGC_WANTMESSAGE;
      }
      break;
    }
    case WM_KEYDOWN: {
      std::optional<ListCommand> command;
      if (wParam == VK_INSERT && !ctrl) command = ListCommand::Add;
      if (wParam == VK_RETURN && ctrl) command = ListCommand::Edit;
      if (wParam == VK_DELETE && !ctrl) command = ListCommand::Remove;
      if (!command) break;
      // As a click of the command's button, so that the dialog runs it one way.
      const auto& owner = *reinterpret_cast<CommandList*>(self);
      const int id = owner.firstId_ + static_cast<int>(*command);
      SendMessageW(GetParent(list), WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                   reinterpret_cast<LPARAM>(owner.buttons_[static_cast<size_t>(*command)]));
      return 0;
    }
    case WM_NCDESTROY: RemoveWindowSubclass(list, &CommandList::Shortcuts, self); break;
    default: break;
  }
  return DefSubclassProc(list, message, wParam, lParam);
}

}  // namespace qm::ui
