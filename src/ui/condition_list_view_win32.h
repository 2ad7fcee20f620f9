// The conditions of the Data Loop and Filter Data dialogs on their "General"
// page: a group with the AND/OR choice and the list of conditions with its
// commands, which open the condition dialog.
#pragma once

#include <windows.h>

#include "dialogs/condition_list.h"
#include "ui/command_list_win32.h"
#include "ui/sourced_dialog_win32.h"

namespace qm::ui {

class ConditionListView {
 public:
  // The group over `box`; the commands use the ids `firstId` to `firstId` + 3.
  void Build(DialogWindow& dialog, Box box, int firstId, std::u16string_view groupCaption,
             const CommandList::Captions& buttons);
  void Fill(const ConditionList& model);
  void Read(ConditionList& model) const;
  // A command, notification or context menu of the list; each runs its
  // command on the model.
  void Command(ConditionList& model, int id, int code);
  void Notify(ConditionList& model, const NMHDR& header);
  void ContextMenu(ConditionList& model, HWND control, POINT at);
  HWND List() const { return list_.List(); }
  HWND Mode() const { return mode_; }

 private:
  void Run(ConditionList& model, ListCommand command);
  DialogWindow* dialog_ = nullptr;
  HWND mode_ = nullptr;
  CommandList list_;
};

// A table dialog whose "General" page holds a condition list: the list's
// commands, notifications and context menu go to it, and its column widths
// are kept with the dialog's placement.
class ConditionsDialog : public SourcedDialog {
 public:
  ConditionsDialog(std::u16string_view caption, const wchar_t* placementName, TableSourcePages& pages,
                   ConditionList& conditions, int scale)
      : SourcedDialog(caption, placementName, pages, scale), model_(conditions) {}

 protected:
  ConditionListView conditions_;

 private:
  std::vector<HWND> RememberedLists() const override { return {conditions_.List()}; }
  void GeneralCommand(int id, int code) override { conditions_.Command(model_, id, code); }
  LRESULT Notify(const NMHDR& header) override {
    conditions_.Notify(model_, header);
    return 0;
  }
  void ContextMenu(HWND control, POINT at) override { conditions_.ContextMenu(model_, control, at); }

  ConditionList& model_;
};

}  // namespace qm::ui
