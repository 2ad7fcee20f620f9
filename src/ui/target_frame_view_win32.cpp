#include <windows.h>
#include <commctrl.h>

#include "ui/enable_controls.h"
#include "ui/file_chooser_win32.h"
#include "ui/frame_view_win32.h"
#include "ui/text_win32.h"

namespace qm::ui {

namespace {

using T = TargetControl;

int Id(T control) { return TargetFrameView::kIdBase + static_cast<int>(control); }
size_t At(T control) { return static_cast<size_t>(control); }

bool Checked(HWND box) { return SendMessageW(box, BM_GETCHECK, 0, 0) == BST_CHECKED; }
void SetChecked(HWND box, bool on) { SendMessageW(box, BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0); }
void SetHint(HWND field, std::u16string_view hint) {
  const std::wstring text = Wide(hint);
  SendMessageW(field, EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
}

}  // namespace

void TargetFrameView::Build(DialogWindow& d, Box a) {
  dialog_ = &d;
  auto& c = controls_;
  using F = TargetFrame;
  c[At(T::SaveToVariable)] = d.Check(Wide(F::kSaveToVariable).c_str(), Box{a.x, a.y, 140, 22}, Id(T::SaveToVariable));
  c[At(T::VariableName)] = d.Edit(Box{a.x + 150, a.y, a.w - 150, 23}, Id(T::VariableName));
  SetHint(c[At(T::VariableName)], F::kVariableHint);
  c[At(T::SaveToFile)] = d.Check(Wide(F::kSaveToFile).c_str(), Box{a.x, a.y + 34, 140, 22}, Id(T::SaveToFile));
  c[At(T::FileName)] = d.Edit(Box{a.x + 150, a.y + 34, a.w - 186, 23}, Id(T::FileName));
  SetHint(c[At(T::FileName)], F::kFileHint);
  c[At(T::FileBrowse)] = d.Button(L"...", Box{a.x + a.w - 30, a.y + 34, 30, 23}, Id(T::FileBrowse), kFollowRight);
  c[At(T::EncodingLabel)] = d.Label(Wide(F::kEncodingLabel).c_str(), Box{a.x + 18, a.y + 71, 120, 18});
  c[At(T::Encoding)] = d.DropList(Box{a.x + 150, a.y + 68, 160, 24}, Id(T::Encoding), WideItems(kEncodingItems));
  c[At(T::KeepFormat)] = d.Check(Wide(F::kKeepFormat).c_str(), Box{a.x, a.y + 108, 300, 22}, Id(T::KeepFormat));
  SetLabelFor(c[At(T::EncodingLabel)], c[At(T::Encoding)]);
}

void TargetFrameView::Fill(const TargetFrame& m) {
  SetChecked(Control(T::SaveToVariable), m.saveToVariable);
  DialogWindow::SetText(Control(T::VariableName), Wide(m.variableName));
  SetChecked(Control(T::SaveToFile), m.saveToFile);
  DialogWindow::SetText(Control(T::FileName), Wide(m.fileName));
  SendMessageW(Control(T::Encoding), CB_SETCURSEL, static_cast<WPARAM>(m.encoding), 0);
  SetChecked(Control(T::KeepFormat), m.keepFormat);
  Refresh(m);
}

void TargetFrameView::Read(TargetFrame& m) const {
  m.saveToVariable = Checked(Control(T::SaveToVariable));
  m.variableName = Utf16(DialogWindow::TextOf(Control(T::VariableName)));
  m.saveToFile = Checked(Control(T::SaveToFile));
  m.fileName = Utf16(DialogWindow::TextOf(Control(T::FileName)));
  m.encoding = EncodingFromIndex(int32_t(SendMessageW(Control(T::Encoding), CB_GETCURSEL, 0, 0)));
  m.keepFormat = Checked(Control(T::KeepFormat));
}

bool TargetFrameView::Command(TargetFrame& m, int id, int code, bool& formatChanged) {
  formatChanged = false;
  if (id < kIdBase || id > Id(T::KeepFormat)) return false;
  if (code != BN_CLICKED) return true;
  const auto control = T(id - kIdBase);
  if (control == T::FileBrowse) {
    Browse();
  } else {
    // The check boxes: the names follow their choice, the format page the
    // keep-format box.
    Read(m);
    Refresh(m);
    formatChanged = control == T::KeepFormat;
  }
  return true;
}

void TargetFrameView::Refresh(const TargetFrame& m) {
  for (size_t i = 0; i < controls_.size(); ++i) EnableControls(controls_[i], m.IsEnabled(T(i)));
}

void TargetFrameView::Browse() {
  ChooseFileInto(dialog_->Handle(), Control(T::FileName),
                 FileChoice{TargetFrame::kBrowseFilter, {}, TargetFrame::kBrowseExtension, true});
}

}  // namespace qm::ui
