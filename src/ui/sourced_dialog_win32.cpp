#include "ui/sourced_dialog_win32.h"

#include "ui/text_win32.h"

namespace qm::ui {

namespace {
constexpr int kWidth = 500;
constexpr int kHeight = 420;
}  // namespace

SourcedDialog::SourcedDialog(std::u16string_view caption, const wchar_t* placementName, TableSourcePages& pages,
                             int scale)
    : DialogWindow(Wide(caption), placementName, kWidth, kHeight, scale), pages_(pages) {}

void SourcedDialog::Build() {
  AddTabs(Box{8, 8, kWidth - 16, kHeight - 56});
  const auto& captions = TableSourcePages::kPageCaptions;
  BeginPage(Wide(captions[0]).c_str());
  BuildGeneral(PageArea());
  BeginPage(Wide(captions[1]).c_str());
  source_.Build(*this, PageArea(), pages_.source);
  BeginPage(Wide(captions[2]).c_str());
  format_.Build(*this, PageArea());
  AddDialogButtons(true);
}

void SourcedDialog::Fill() {
  FillGeneral();
  source_.Fill(pages_.source);
  format_.Fill(pages_.format);
  SetPageVisible(2, pages_.FormatPageVisible());
}

void SourcedDialog::ReadAll() {
  ReadGeneral();
  source_.Read(pages_.source);
  format_.Read(pages_.format);
}

void SourcedDialog::Command(int id, int code, HWND) {
  bool sourceChanged = false;
  if (source_.Command(pages_.source, id, code, sourceChanged)) {
    if (sourceChanged) {
      SetPageVisible(2, pages_.FormatPageVisible());
      SourceChanged();
    }
    return;
  }
  if (format_.Command(pages_.format, id, code)) return;
  GeneralCommand(id, code);
}

}  // namespace qm::ui
