#include "plugin/csv_data_module.h"

#include "plugin/action_table.h"
#include "core/action_catalogue.h"
#include "core/errors.h"
#include "core/messages.h"
#include "platform/file_system.h"
#include "platform/host_window.h"
#include "platform/module_info.h"
#include "plugin/csv_image.h"
#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "task/job_table.h"
#include "task/live_objects.h"
#include "ui/editors.h"

namespace qm {

namespace {

std::u16string HostText(void* window, uintptr_t which) {
  intptr_t answer = 0;
  if (!QueryHostWindow(window, kQmMsgHostSetting, which, answer) || answer == 0) return {};
  return std::u16string(reinterpret_cast<const char16_t*>(answer));
}

}  // namespace

TCSVDataDM::TCSVDataDM() {
  LiveObjects::Instance();  // made here, before the host's tasks run on threads of their own
  ImageCollection.push_back({u"csv", std::vector<uint8_t>(kCsvImagePng, kCsvImagePng + kCsvImagePngSize)});
  Plugin.Description = u"CSV Data";
  Plugin.ID = 717399667;
  Plugin.ImageCollection = &ImageCollection;
  Plugin.ImageNum = 0;
  Plugin.OnAbout = [this] { PluginAbout(); };
  // The catalogue as the host shows and stores it; the position is the index
  // the routines are dispatched on. The steps after a loop's begin are
  // indented one level.
  for (const CatalogueAction& entry : kCatalogue) {
    TAction& action = Plugin.AddAction();
    action.Name = entry.name;
    action.SetActionID(entry.id);
    const bool loop = entry.kind == ActionKind::BeginLoop;
    action.ActionType = loop ? atBeginLoop : atSimple;
    action.Indent = loop ? 1 : 0;
    action.AllowNTService = true;
    action.ImageNum = 0;
    action.OnExecAction = [this](TAction& a, QmTaskBridge& t, TAFActionParams& p) { return ActionExec(a, t, p); };
    action.OnConfigAction = [this](TAction& a, TAFActionParams& p) { return ActionConfig(a, p); };
    // The step text is the action's name: the description handler changes nothing.
    action.OnActionDescr = [](TAction&, TAFActionParams&, std::u16string&) {};
    action.OnActionDelete = [](TAction&, TAFActionParams&) {};
    action.OnJobStop = [this](TAction& a, QmTaskBridge& t, TAFActionParams& p) { ActionJobStop(a, t, p); };
  }
}

TCSVDataDM::~TCSVDataDM() {
  // The catalogue the host initialised frees what its tasks left behind (a
  // loop still releases its task reference here, while the host's records
  // live); so does a module refused before any was initialised (an old
  // host), which owns the registry it made. A second module refused beside
  // an initialised one leaves the registry alone.
  const TAFPlugin* current = TAFPlugin::Current();
  if (current == &Plugin || current == nullptr) LiveObjects::Release();
}

void TCSVDataDM::ReadHostSettings() {
  void* window = Plugin.AppInfo().WHandle;
  intptr_t number = 0;
  if (QueryHostWindow(window, kQmMsgHostSetting, kQmSettingNumber, number)) Settings.number = number;
  const std::u16string folder = HostText(window, kQmSettingFolder);
  if (!folder.empty()) Settings.folder = AddTrailingDelimiter(folder) + RemoveChar(Plugin.Description, u' ');
  Settings.text = HostText(window, kQmSettingText);
}

bool TCSVDataDM::ActionConfig(TAction& sender, TAFActionParams& params) {
  TQMPluginParams p(params);
  const auto configure = ui::EditorForIndex(sender.Index);
  const bool confirmed = configure && configure(p);
  if (confirmed) p.ToActionParams(params);
  return confirmed;
}

bool TCSVDataDM::ActionExec(TAction& sender, QmTaskBridge& task, TAFActionParams& params) {
  // Nothing is caught here: a failure that escapes a routine travels on to
  // the host, and the parameter block is never written back.
  TQMPluginParams p(params);
  const auto execute = ExecutorForIndex(sender.Index);
  return execute && execute(task, p);
}

void TCSVDataDM::ActionJobStop(TAction& sender, QmTaskBridge& task, TAFActionParams& params) {
  FreeJobTable(task);
  TQMPluginParams p(params);
  // Only this index releases a saved loop, and it is not the Data Loop's own
  // index: a Data Loop stopped half way keeps its loop object. Kept as it is.
  if (sender.Index == kJobStopLoopIndex) StopDataLoopForStep(task, p);
}

void TCSVDataDM::PluginAbout() {
  ShowAbout(Plugin.Icon, Plugin.Description, Format(msg::kAboutAddon, {OwnFileVersion()}));
}

}  // namespace qm
