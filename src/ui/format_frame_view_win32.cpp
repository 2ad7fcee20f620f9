#include <windows.h>
#include <commctrl.h>

#include "ui/enable_controls.h"
#include "ui/frame_view_win32.h"
#include "ui/text_win32.h"

namespace qm::ui {

namespace {

int Id(FormatControl control) { return FormatFrameView::kIdBase + static_cast<int>(control); }

}  // namespace

void FormatFrameView::Build(DialogWindow& d, Box a) {
  auto& c = controls_;
  using F = FormatFrame;
  c[size_t(FormatControl::DelimiterLabel)] = d.Label(Wide(F::kDelimiterLabel).c_str(), Box{a.x, a.y + 3, 130, 18});
  c[size_t(FormatControl::Delimiter)] =
      d.DropList(Box{a.x + 140, a.y, 160, 24}, Id(FormatControl::Delimiter), WideItems(F::kDelimiterItems));
  c[size_t(FormatControl::OtherCharLabel)] = d.Label(Wide(F::kOtherCharLabel).c_str(), Box{a.x + 310, a.y + 3, 62, 18});
  // Free text, stored as typed: it may be a variable reference such as
  // {delim}, expanded when the step runs, so the field takes the rest of the
  // row and grows with the dialog.
  c[size_t(FormatControl::OtherChar)] = d.Edit(Box{a.x + 374, a.y, a.w - 374, 23}, Id(FormatControl::OtherChar));
  c[size_t(FormatControl::QuoteCharLabel)] = d.Label(Wide(F::kQuoteCharLabel).c_str(), Box{a.x, a.y + 35, 130, 18});
  c[size_t(FormatControl::QuoteChar)] =
      d.DropList(Box{a.x + 140, a.y + 32, 160, 24}, Id(FormatControl::QuoteChar), WideItems(F::kQuoteItems));
  c[size_t(FormatControl::Strict)] =
      d.Check(Wide(F::kStrict).c_str(), Box{a.x, a.y + 66, 380, 22}, Id(FormatControl::Strict));
  c[size_t(FormatControl::ResetStandard)] =
      d.Button(Wide(F::kResetStandard).c_str(), Box{a.x, a.y + 100, 200, 26}, Id(FormatControl::ResetStandard));
  c[size_t(FormatControl::ResetExcel)] =
      d.Button(Wide(F::kResetExcel).c_str(), Box{a.x + 210, a.y + 100, 200, 26}, Id(FormatControl::ResetExcel));
}

void FormatFrameView::Fill(const FormatFrame& m) {
  SendMessageW(Control(FormatControl::Delimiter), CB_SETCURSEL, static_cast<WPARAM>(m.delimiter), 0);
  SendMessageW(Control(FormatControl::QuoteChar), CB_SETCURSEL, static_cast<WPARAM>(m.quote), 0);
  DialogWindow::SetText(Control(FormatControl::OtherChar), Wide(m.otherChar));
  SendMessageW(Control(FormatControl::Strict), BM_SETCHECK, m.strict ? BST_CHECKED : BST_UNCHECKED, 0);
  Refresh(m);
}

void FormatFrameView::Read(FormatFrame& m) const {
  m.delimiter = DelimiterChoice(SendMessageW(Control(FormatControl::Delimiter), CB_GETCURSEL, 0, 0));
  m.quote = QuoteChoice(SendMessageW(Control(FormatControl::QuoteChar), CB_GETCURSEL, 0, 0));
  m.otherChar = Utf16(DialogWindow::TextOf(Control(FormatControl::OtherChar)));
  m.strict = SendMessageW(Control(FormatControl::Strict), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

bool FormatFrameView::Command(FormatFrame& m, int id, int code) {
  if (id < kIdBase || id > Id(FormatControl::ResetExcel)) return false;
  const auto control = FormatControl(id - kIdBase);
  if (control == FormatControl::Delimiter && code == CBN_SELCHANGE) {
    Read(m);
    m.SelectDelimiter(m.delimiter);
    Refresh(m);
  } else if (control == FormatControl::ResetStandard && code == BN_CLICKED) {
    Read(m);
    m.ResetToStandard();
    Fill(m);
  } else if (control == FormatControl::ResetExcel && code == BN_CLICKED) {
    Read(m);
    m.ResetToExcel();
    Fill(m);
  }
  return true;
}

void FormatFrameView::Refresh(const FormatFrame& m) {
  for (size_t i = 0; i < controls_.size(); ++i) EnableControls(controls_[i], m.IsEnabled(FormatControl(i)));
}

}  // namespace qm::ui
