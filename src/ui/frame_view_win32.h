// The views of the shared editor frames (source, format, target): each creates its controls on one tab
// page of a dialog, fills them from its model, reads them back, and keeps the
// enabled and visible states the model gives. Control ids are the frame's id
// base plus the model's control number.
#pragma once

#include <windows.h>

#include <array>

#include "dialogs/format_frame.h"
#include "dialogs/source_frame.h"
#include "dialogs/target_frame.h"
#include "ui/dialog_window_win32.h"

namespace qm::ui {

class FormatFrameView {
 public:
  static constexpr int kIdBase = 300;

  // Creates the controls within `area` (100% pixels) of the current page.
  void Build(DialogWindow& dialog, Box area);
  void Fill(const FormatFrame& model);
  void Read(FormatFrame& model) const;
  // A command of one of the frame's controls; true when it was one.
  bool Command(FormatFrame& model, int id, int code);
  HWND Control(FormatControl control) const { return controls_[static_cast<size_t>(control)]; }

 private:
  void Refresh(const FormatFrame& model);
  std::array<HWND, static_cast<size_t>(FormatControl::ResetExcel) + 1> controls_{};
};

class SourceFrameView {
 public:
  static constexpr int kIdBase = 200;

  void Build(DialogWindow& dialog, Box area, const SourceFrame& model);
  void Fill(const SourceFrame& model);
  void Read(SourceFrame& model) const;
  // A command of one of the frame's controls; true when it was one (the
  // source choice may change what the dialog shows: `sourceChanged`).
  bool Command(SourceFrame& model, int id, int code, bool& sourceChanged);
  HWND Control(SourceControl control) const { return controls_[static_cast<size_t>(control)]; }
  // Applies the model's visible and enabled states.
  void Refresh(const SourceFrame& model);

 private:
  void Browse();
  // The "Skip first lines" field changed: the spinner's position, the value
  // saved, follows it.
  void FollowSkipFirst();
  DialogWindow* dialog_ = nullptr;
  std::array<HWND, static_cast<size_t>(SourceControl::HeaderLine) + 1> controls_{};
  std::array<HWND, 3> radios_{};
  HWND spinner_ = nullptr;
  int32_t skipPosition_ = 0;
};

class TargetFrameView {
 public:
  static constexpr int kIdBase = 400;

  void Build(DialogWindow& dialog, Box area);
  void Fill(const TargetFrame& model);
  void Read(TargetFrame& model) const;
  // A command of one of the frame's controls; true when it was one (a click
  // of "Keep original CSV format" may change the pages shown: `formatChanged`).
  bool Command(TargetFrame& model, int id, int code, bool& formatChanged);
  HWND Control(TargetControl control) const { return controls_[static_cast<size_t>(control)]; }

 private:
  void Refresh(const TargetFrame& model);
  void Browse();
  DialogWindow* dialog_ = nullptr;
  std::array<HWND, static_cast<size_t>(TargetControl::KeepFormat) + 1> controls_{};
};

}  // namespace qm::ui
