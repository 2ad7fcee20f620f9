// The catalogue component: what the plug-in offers (description, actions,
// events, images) and the conversion of it into the host's records.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "abi/host_abi.h"
#include "boundary/task_bridge.h"

namespace qm {

class TAFPlugin;
struct TAFPluginThunks;

// An image of the plug-in's image collection, in its stored format (PNG).
struct PluginImage {
  std::u16string name;
  std::vector<uint8_t> bytes;
};

struct TAction {
  void* Icon = nullptr;
  std::u16string Name = u"New Action";
  bool AllowNTService = true;
  int32_t Indent = 0;
  int32_t ActionType = atSimple;
  std::u16string ScriptFunctionName;
  int32_t ImageNum = -1;

  std::function<bool(TAction&, QmTaskBridge&, TAFActionParams&)> OnExecAction;
  std::function<bool(TAction&, TAFActionParams&)> OnConfigAction;
  std::function<void(TAction&, TAFActionParams&, std::u16string&)> OnActionDescr;
  std::function<void(TAction&, TAFActionParams&)> OnActionDelete;
  std::function<void(TAction&, QmTaskBridge&, TAFActionParams&)> OnJobStop;

  // Stored upper-cased.
  void SetActionID(std::u16string_view id);
  const std::u16string& ActionID() const { return actionId_; }
  // Position in the owning plug-in's action list.
  int32_t Index = -1;

 private:
  std::u16string actionId_;
};

struct TEvent {
  void* Icon = nullptr;
  std::u16string Name = u"New Event";
  bool AllowNTService = true;
  int32_t ImageNum = -1;

  std::function<bool(TEvent&, TAFEventParams&)> OnConfigEvent;
  std::function<bool(TEvent&, TAFEventParams&)> OnStartEvent;
  std::function<void(TEvent&, TAFEventParams&)> OnStopEvent;
  std::function<void(TEvent&, TAFEventParams&, std::u16string&)> OnEventDescr;
  std::function<void(TEvent&, TAFEventParams&)> OnDeleteEvent;
  std::function<void(TEvent&, TAFEventParams&)> OnDuplicateEvent;

  void SetEventID(std::u16string_view id);
  const std::u16string& EventID() const { return eventId_; }

 private:
  std::u16string eventId_;
};

class TAFPlugin {
 public:
  TAFPlugin();
  ~TAFPlugin();
  TAFPlugin(const TAFPlugin&) = delete;
  TAFPlugin& operator=(const TAFPlugin&) = delete;

  std::u16string Description = u"New plugin for Quillmate";
  int32_t ID;
  void* Icon = nullptr;
  // Items are added before Initialize and never changed afterwards: the host's
  // records point at their texts.
  TAction& AddAction();
  TEvent& AddEvent();
  std::vector<std::unique_ptr<TAction>>& Actions() { return actions_; }
  std::vector<std::unique_ptr<TEvent>>& Events() { return events_; }
  std::vector<PluginImage>* ImageCollection = nullptr;
  int32_t ImageNum = -1;
  std::function<void()> OnPluginConfig;
  std::function<void()> OnAbout;
  std::function<void()> OnShutdownPlugin;
  std::function<void(uint32_t)> OnSetLocale;

  // Builds the host records from the catalogue; once per library.
  TAFPluginInfo* Initialize(const TAFAppInfo& appInfo);

  const TAFAppInfo& AppInfo() const { return appInfo_; }
  const std::u16string& ModuleFileName() const { return moduleFileName_; }
  // The host's IQmBridge reference, fetched from the host window on first use.
  void* Bridge();

  // The initialised plug-in of this library, or null.
  static TAFPlugin* Current();

  // Image export with the host's size protocol.
  bool ExportImage(int32_t imageIndex, void* buffer, uint32_t* size) const;

 private:
  friend struct TAFPluginThunks;
  TAFAppInfo appInfo_{};
  std::u16string moduleFileName_;
  TAFPluginInfo pluginInfo_{};
  TAFActionsInfo actionsInfo_{};
  TAFEventsInfo eventsInfo_{};
  std::vector<TAFActionInfo*> actionInfos_;
  std::vector<TAFEventInfo*> eventInfos_;
  std::vector<std::unique_ptr<TAction>> actions_;
  std::vector<std::unique_ptr<TEvent>> events_;
  void* bridge_ = nullptr;
  bool bridgeRead_ = false;
};

// Cuts a step description to what the host's buffer takes: longer than 256
// characters becomes the first 253 followed by "...".
std::u16string FitDescription(std::u16string text);

}  // namespace qm
