#include "ui/condition_list_view_win32.h"

#include "ui/condition_dialog_win32.h"
#include "ui/text_win32.h"

namespace qm::ui {

namespace {

CommandList::Rows RowsOf(const ConditionList& model) {
  CommandList::Rows rows;
  for (const auto& condition : model.conditions) {
    const auto texts = ConditionList::RowTexts(condition);
    rows.emplace_back(texts.begin(), texts.end());
  }
  return rows;
}

}  // namespace

void ConditionListView::Build(DialogWindow& d, Box box, int firstId, std::u16string_view groupCaption,
                              const CommandList::Captions& buttons) {
  dialog_ = &d;
  d.Group(Wide(groupCaption).c_str(), box, kStretchRight | kStretchDown);
  const Box inner{box.x + 10, box.y + 20, box.w - 20, box.h - 30};
  mode_ = d.DropList(Box{inner.x, inner.y, 300, 24}, firstId, WideItems(ConditionList::kModeItems));
  constexpr int kWidths[] = {50, 130, 100};
  list_.Build(d, Box{inner.x, inner.y + 32, inner.w, inner.h - 32}, firstId + 1, ConditionList::kColumnHeadings,
              kWidths, buttons, ConditionList::kMenuCaptions);
}

void ConditionListView::Fill(const ConditionList& model) {
  SendMessageW(mode_, CB_SETCURSEL, model.orMode ? 1 : 0, 0);
  list_.SetRows(RowsOf(model), -1);
}

void ConditionListView::Read(ConditionList& model) const {
  model.orMode = SendMessageW(mode_, CB_GETCURSEL, 0, 0) == 1;
}

void ConditionListView::Command(ConditionList& model, int id, int code) {
  if (const auto command = list_.CommandOf(id, code)) Run(model, *command);
}

void ConditionListView::Notify(ConditionList& model, const NMHDR& header) {
  if (const auto command = list_.NotifyCommand(header)) Run(model, *command);
}

void ConditionListView::ContextMenu(ConditionList& model, HWND control, POINT at) {
  if (const auto command = list_.MenuCommand(control, at)) Run(model, *command);
}

void ConditionListView::Run(ConditionList& model, ListCommand command) {
  DialogWindow& d = *dialog_;
  RunListCommand(
      command, model, list_, [&d](ConditionEditor& item) { return EditCondition(item, d.Handle(), d.Scale()); },
      [&model] { return RowsOf(model); });
}

}  // namespace qm::ui
