// How every editor runs: its model loads the step's block, the dialog edits
// the model, and only a confirmed dialog writes the block back.
#pragma once

#include <windows.h>

#include <utility>

#include "boundary/host_services.h"
#include "boundary/plugin_params.h"

namespace qm::ui {

// `Dialog` is made from the model and the host's scale; `model` arrives
// made (an editor with modes takes its mode in its constructor).
template <class Dialog, class Model>
bool RunEditor(TQMPluginParams& params, Model&& model) {
  model.Load(params);
  Dialog dialog(model, DefaultScale());
  if (!dialog.RunModal(static_cast<HWND>(HostApp().WHandle))) return false;
  model.Save(params);
  return true;
}

}  // namespace qm::ui
