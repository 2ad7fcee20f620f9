#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <cwchar>
#include <string>

#include "ui/enable_controls.h"
#include "ui/file_chooser_win32.h"
#include "ui/frame_view_win32.h"
#include "ui/text_win32.h"

namespace qm::ui {

namespace {

using S = SourceControl;
constexpr int kRadioIdBase = SourceFrameView::kIdBase + 50;

int Id(S control) { return SourceFrameView::kIdBase + static_cast<int>(control); }
size_t At(S control) { return static_cast<size_t>(control); }

bool Checked(HWND box) { return SendMessageW(box, BM_GETCHECK, 0, 0) == BST_CHECKED; }
void SetChecked(HWND box, bool on) { SendMessageW(box, BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0); }

}  // namespace

void SourceFrameView::Build(DialogWindow& d, Box a, const SourceFrame& model) {
  dialog_ = &d;
  auto& c = controls_;
  using F = SourceFrame;
  const auto items = model.SourceItems();
  c[At(S::SourceChoice)] = d.Group(Wide(F::kCaption).c_str(), Box{a.x, a.y, a.w, 48});
  const int column = (a.w - 20) / model.SourceColumns();
  for (size_t i = 0; i < items.size(); ++i) {
    radios_[i] = d.Radio(Wide(items[i]).c_str(), Box{a.x + 10 + column * int(i), a.y + 20, column - 8, 20},
                         kRadioIdBase + int(i), i == 0);
  }
  const int y = a.y + 58;
  // The page control without tabs: the note, the file, the text.
  c[At(S::PreviousNote)] = d.Label(Wide(F::kPreviousNote).c_str(), Box{a.x, y, a.w, 40}, kStretchRight);
  c[At(S::FileNameLabel)] = d.Label(Wide(F::kFileNameLabel).c_str(), Box{a.x, y + 3, 120, 18});
  c[At(S::FileName)] = d.Edit(Box{a.x + 130, y, a.w - 166, 23}, Id(S::FileName));
  c[At(S::FileBrowse)] = d.Button(L"...", Box{a.x + a.w - 30, y, 30, 23}, Id(S::FileBrowse), kFollowRight);
  c[At(S::EncodingLabel)] = d.Label(Wide(F::kEncodingLabel).c_str(), Box{a.x, y + 35, 120, 18});
  c[At(S::Encoding)] = d.DropList(Box{a.x + 130, y + 32, 160, 24}, Id(S::Encoding), WideItems(kEncodingItems));
  c[At(S::Text)] = d.Memo(Box{a.x, y, a.w, 112}, Id(S::Text), kStretchRight);
  // The options below the pages.
  const int o = y + 124;
  c[At(S::SkipFirstLabel)] = d.Label(Wide(F::kSkipFirstLabel).c_str(), Box{a.x, o + 3, 130, 18});
  c[At(S::SkipFirst)] = d.Edit(Box{a.x + 130, o, 60, 23}, Id(S::SkipFirst), 0, ES_NUMBER);
  spinner_ = d.Add(UPDOWN_CLASSW, L"", UDS_SETBUDDYINT | UDS_ALIGNRIGHT | UDS_ARROWKEYS | UDS_NOTHOUSANDS,
                   Box{a.x + 190, o, 18, 23});
  SendMessageW(spinner_, UDM_SETBUDDY, reinterpret_cast<WPARAM>(c[At(S::SkipFirst)]), 0);
  SendMessageW(spinner_, UDM_SETRANGE32, F::kSkipFirstMin, F::kSkipFirstMax);
  c[At(S::SkipEmpty)] = d.Check(Wide(F::kSkipEmpty).c_str(), Box{a.x, o + 30, 300, 22}, Id(S::SkipEmpty));
  c[At(S::SkipComments)] = d.Check(Wide(F::kSkipComments).c_str(), Box{a.x, o + 58, 200, 22}, Id(S::SkipComments));
  c[At(S::CommentChars)] =
      d.EditableList(Box{a.x + 210, o + 57, 80, 24}, Id(S::CommentChars), WideItems(F::kCommentItems));
  c[At(S::HeaderLine)] = d.Check(Wide(F::kHeaderLine).c_str(), Box{a.x, o + 86, 300, 22}, Id(S::HeaderLine));
  SetLabelFor(c[At(S::FileNameLabel)], c[At(S::FileName)]);
  SetLabelFor(c[At(S::EncodingLabel)], c[At(S::Encoding)]);
  SetLabelFor(c[At(S::SkipFirstLabel)], c[At(S::SkipFirst)]);
}

void SourceFrameView::Fill(const SourceFrame& m) {
  for (size_t i = 0; i < radios_.size(); ++i) {
    if (radios_[i]) SetChecked(radios_[i], int(i) == m.SourceIndex());
  }
  DialogWindow::SetText(Control(S::FileName), Wide(m.fileName));
  SendMessageW(Control(S::Encoding), CB_SETCURSEL, static_cast<WPARAM>(m.encoding), 0);
  DialogWindow::SetText(Control(S::Text), Wide(m.text));
  SendMessageW(spinner_, UDM_SETPOS32, 0, m.skipFirst);
  skipPosition_ = m.skipFirst;
  SetChecked(Control(S::SkipEmpty), m.skipEmpty);
  SetChecked(Control(S::SkipComments), m.skipComments);
  DialogWindow::SetText(Control(S::CommentChars), Wide(m.commentChars));
  SetChecked(Control(S::HeaderLine), m.headerLine);
  Refresh(m);
}

void SourceFrameView::Read(SourceFrame& m) const {
  for (size_t i = 0; i < radios_.size(); ++i) {
    if (radios_[i] && Checked(radios_[i])) m.SelectSource(int32_t(i));
  }
  m.fileName = Utf16(DialogWindow::TextOf(Control(S::FileName)));
  m.encoding = EncodingFromIndex(int32_t(SendMessageW(Control(S::Encoding), CB_GETCURSEL, 0, 0)));
  m.text = Utf16(DialogWindow::TextOf(Control(S::Text)));
  m.skipFirst = skipPosition_;
  m.skipEmpty = Checked(Control(S::SkipEmpty));
  m.skipComments = Checked(Control(S::SkipComments));
  m.commentChars = Utf16(DialogWindow::TextOf(Control(S::CommentChars)));
  m.headerLine = Checked(Control(S::HeaderLine));
}

bool SourceFrameView::Command(SourceFrame& m, int id, int code, bool& sourceChanged) {
  sourceChanged = false;
  if (id >= kRadioIdBase && id < kRadioIdBase + 3) {
    if (code == BN_CLICKED) {
      Read(m);
      Refresh(m);
      sourceChanged = true;
    }
    return true;
  }
  if (id == Id(S::SkipComments) && code == BN_CLICKED) {
    Read(m);
    Refresh(m);
    return true;
  }
  if (id == Id(S::SkipFirst) && code == EN_CHANGE) {
    FollowSkipFirst();
    return true;
  }
  if (id == Id(S::FileBrowse) && code == BN_CLICKED) {
    Browse();
    return true;
  }
  return id >= kIdBase && id <= Id(S::HeaderLine);
}

void SourceFrameView::Refresh(const SourceFrame& m) {
  // The page shown: the note, the file with its encoding, or the text.
  const int page = m.ShownPage();
  const bool pages = m.IsVisible(S::Pages);
  auto show = [this](S control, bool on) { dialog_->SetVisible(Control(control), on); };
  show(S::PreviousNote, pages && page == 0);
  for (S control : {S::FileNameLabel, S::FileName, S::FileBrowse, S::EncodingLabel, S::Encoding}) {
    show(control, pages && page == 1);
  }
  show(S::Text, pages && page == 2);
  for (S control : {S::SkipFirstLabel, S::SkipFirst, S::SkipEmpty, S::SkipComments, S::CommentChars, S::HeaderLine}) {
    show(control, m.IsVisible(control));
  }
  dialog_->SetVisible(spinner_, m.IsVisible(S::SkipFirst));
  EnableControls(Control(S::CommentChars), m.IsEnabled(S::CommentChars));
}

void SourceFrameView::FollowSkipFirst() {
  // The spinner's position follows the field: a number typed beyond the
  // range counts as the nearest end of it; an entry that is no number (an
  // empty field) leaves the position where it was.
  const std::wstring text = DialogWindow::TextOf(Control(S::SkipFirst));
  wchar_t* end = nullptr;
  const long typed = std::wcstol(text.c_str(), &end, 10);
  if (text.empty() || *end != 0) return;
  skipPosition_ = static_cast<int32_t>(std::clamp<long>(typed, SourceFrame::kSkipFirstMin, SourceFrame::kSkipFirstMax));
}

void SourceFrameView::Browse() {
  ChooseFileInto(dialog_->Handle(), Control(S::FileName),
                 FileChoice{SourceFrame::kBrowseFilter, SourceFrame::kBrowseTitle, {}, false});
}

}  // namespace qm::ui
