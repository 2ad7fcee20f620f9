// The plug-in's data module: the catalogue of thirteen actions and the
// handlers that turn the host's calls into calls of the action routines.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/action_catalogue.h"
#include "plugin/af_plugin.h"

namespace qm {

// What the host answered to the settings queries at entry.
struct HostSettings {
  intptr_t number = 0;
  std::u16string folder;  // the host's folder joined with the description without blanks
  std::u16string text;
};

class TCSVDataDM {
 public:
  TCSVDataDM();
  // The initialised data module goes when the library unloads: the tables
  // and loops its tasks left behind go with it.
  ~TCSVDataDM();
  TCSVDataDM(const TCSVDataDM&) = delete;
  TCSVDataDM& operator=(const TCSVDataDM&) = delete;

  TAFPlugin Plugin;
  std::vector<PluginImage> ImageCollection;
  HostSettings Settings;

  void ReadHostSettings();
  bool ActionConfig(TAction& sender, TAFActionParams& params);
  bool ActionExec(TAction& sender, QmTaskBridge& task, TAFActionParams& params);
  void ActionJobStop(TAction& sender, QmTaskBridge& task, TAFActionParams& params);
  void PluginAbout();
};

// The index whose job stop also releases a saved Data Loop (see ActionJobStop).
inline constexpr int32_t kJobStopLoopIndex = CatalogueIndex(Action::RemoveDuplicates);

}  // namespace qm
