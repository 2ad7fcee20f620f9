#include "plugin/af_plugin.h"

#include <chrono>
#include <cstring>
#include <random>

#include "boundary/host_services.h"
#include "core/errors.h"
#include "core/messages.h"
#include "platform/host_window.h"
#include "platform/module_info.h"

namespace qm {

namespace {

// The one initialised catalogue of this library; the host's calls reach it
// through the free functions below.
TAFPlugin* g_plugin = nullptr;
// Set by the first Initialize and never cleared: one catalogue per library.
bool g_initialised = false;

std::u16string Upper(std::u16string_view text) {
  std::u16string out(text);
  for (auto& c : out) {
    if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - 32);
  }
  return out;
}

TAction& ActionAt(int32_t index) {
  auto& actions = g_plugin->Actions();
  if (index < 0 || static_cast<size_t>(index) >= actions.size()) RaiseListIndexError(index);
  return *actions[static_cast<size_t>(index)];
}

TEvent& EventAt(int32_t index) {
  auto& events = g_plugin->Events();
  if (index < 0 || static_cast<size_t>(index) >= events.size()) RaiseListIndexError(index);
  return *events[static_cast<size_t>(index)];
}

// A cleared record from the host's allocator.
template <typename Record>
Record* NewHostRecord(const TAFAppInfo& app) {
  void* block = nullptr;
  app.QMGetMemory(&block, sizeof(Record));
  std::memset(block, 0, sizeof(Record));
  return static_cast<Record*>(block);
}

// Gives each record back to the host's allocator with its size.
template <typename Record>
void FreeHostRecords(const TAFAppInfo& app, std::vector<Record*>& records) {
  for (Record*& record : records) {
    if (!record) continue;
    void* p = record;
    app.QMFreeMemory(&p, sizeof(Record));
    record = nullptr;
  }
}

void CopyDescription(std::u16string text, char16_t* descr) {
  text = FitDescription(std::move(text));
  std::memcpy(descr, text.c_str(), (text.size() + 1) * sizeof(char16_t));
}

}  // namespace

// The forwarding routines placed into the host's tables.
struct TAFPluginThunks {
  static TAFActionInfo* GetActionInfo(int32_t index) {
    ActionAt(index);  // an index outside the list raises
    return g_plugin->actionInfos_[static_cast<size_t>(index)];
  }
  static LongBool ConfigAction(int32_t index, TAFActionParams* params) {
    TAction& a = ActionAt(index);
    return a.OnConfigAction && a.OnConfigAction(a, *params) ? kLongTrue : kLongFalse;
  }
  static LongBool ExecAction(int32_t index, void* taskIntf, TAFActionParams* params) {
    TAction& a = ActionAt(index);
    if (!a.OnExecAction) return kLongFalse;
    QmTaskBridge task = QmTaskBridge::Cast(taskIntf);
    return a.OnExecAction(a, task, *params) ? kLongTrue : kLongFalse;
  }
  static void ActionDescr(int32_t index, TAFActionParams* params, char16_t* descr) {
    TAction& a = ActionAt(index);
    std::u16string text = a.Name;
    if (a.OnActionDescr) a.OnActionDescr(a, *params, text);
    CopyDescription(std::move(text), descr);
  }
  static void DeleteAction(int32_t index, TAFActionParams* params) {
    TAction& a = ActionAt(index);
    if (a.OnActionDelete) a.OnActionDelete(a, *params);
  }
  static void JobStop(int32_t index, void* taskIntf, TAFActionParams* params) {
    TAction& a = ActionAt(index);
    if (!a.OnJobStop) return;
    QmTaskBridge task = QmTaskBridge::Cast(taskIntf);
    a.OnJobStop(a, task, *params);
  }
  static LongBool GetActionImage(int32_t num, void* buffer, uint32_t* size) {
    auto& actions = g_plugin->Actions();
    if (num < 0 || static_cast<size_t>(num) >= actions.size()) {
      *size = 0;
      return kLongTrue;
    }
    return g_plugin->ExportImage(actions[static_cast<size_t>(num)]->ImageNum, buffer, size) ? kLongTrue : kLongFalse;
  }

  static TAFEventInfo* GetEventInfo(int32_t index) {
    EventAt(index);
    return g_plugin->eventInfos_[static_cast<size_t>(index)];
  }
  static LongBool ConfigEvent(int32_t index, TAFEventParams* params) {
    TEvent& e = EventAt(index);
    return e.OnConfigEvent && e.OnConfigEvent(e, *params) ? kLongTrue : kLongFalse;
  }
  static LongBool StartEvent(int32_t index, TAFEventParams* params) {
    TEvent& e = EventAt(index);
    return e.OnStartEvent && e.OnStartEvent(e, *params) ? kLongTrue : kLongFalse;
  }
  static void StopEvent(int32_t index, TAFEventParams* params) {
    TEvent& e = EventAt(index);
    if (e.OnStopEvent) e.OnStopEvent(e, *params);
  }
  static void EventDescr(int32_t index, TAFEventParams* params, char16_t* descr) {
    TEvent& e = EventAt(index);
    std::u16string text = e.Name;
    if (e.OnEventDescr) e.OnEventDescr(e, *params, text);
    CopyDescription(std::move(text), descr);
  }
  static void DeleteEvent(int32_t index, TAFEventParams* params) {
    TEvent& e = EventAt(index);
    if (e.OnDeleteEvent) e.OnDeleteEvent(e, *params);
  }
  static void DuplicateEvent(int32_t index, TAFEventParams* params) {
    TEvent& e = EventAt(index);
    if (e.OnDuplicateEvent) e.OnDuplicateEvent(e, *params);
  }
  static LongBool GetTriggerImage(int32_t num, void* buffer, uint32_t* size) {
    auto& events = g_plugin->Events();
    if (num < 0 || static_cast<size_t>(num) >= events.size()) {
      *size = 0;
      return kLongTrue;
    }
    return g_plugin->ExportImage(events[static_cast<size_t>(num)]->ImageNum, buffer, size) ? kLongTrue : kLongFalse;
  }

  static void PluginConfig() { g_plugin->OnPluginConfig(); }
  static void About() { g_plugin->OnAbout(); }
  static void ShutdownPlugin() { g_plugin->OnShutdownPlugin(); }
  static void SetLocale(uint32_t lcid) {
    if (g_plugin->OnSetLocale) g_plugin->OnSetLocale(lcid);
  }
  static LongBool GetPluginImage(void* buffer, uint32_t* size) {
    return g_plugin->ExportImage(g_plugin->ImageNum, buffer, size) ? kLongTrue : kLongFalse;
  }
  static void ClearImages() {
    if (g_plugin->ImageCollection) g_plugin->ImageCollection->clear();
  }
};

void TAction::SetActionID(std::u16string_view id) { actionId_ = Upper(id); }
void TEvent::SetEventID(std::u16string_view id) { eventId_ = Upper(id); }

std::u16string FitDescription(std::u16string text) {
  if (text.size() > 256) {
    text.resize(253);
    text += u"...";
  }
  return text;
}

TAFPlugin::TAFPlugin() {
  std::mt19937 random(static_cast<uint32_t>(std::chrono::system_clock::now().time_since_epoch().count()));
  ID = static_cast<int32_t>(std::uniform_int_distribution<int32_t>(0, 2147483547 - 1)(random)) + 50;
}

TAFPlugin::~TAFPlugin() {
  FreeHostRecords(appInfo_, actionInfos_);
  FreeHostRecords(appInfo_, eventInfos_);
  bridge_ = nullptr;
  if (g_plugin == this) {
    g_plugin = nullptr;
    ClearHostApp();
  }
}

TAction& TAFPlugin::AddAction() {
  actions_.push_back(std::make_unique<TAction>());
  actions_.back()->Index = static_cast<int32_t>(actions_.size() - 1);
  return *actions_.back();
}

TEvent& TAFPlugin::AddEvent() {
  events_.push_back(std::make_unique<TEvent>());
  return *events_.back();
}

TAFPlugin* TAFPlugin::Current() { return g_plugin; }

TAFPluginInfo* TAFPlugin::Initialize(const TAFAppInfo& appInfo) {
  if (g_initialised) throw QmError(msg::kOnlyOnePlugin);
  moduleFileName_ = OwnModuleFileName();
  g_plugin = this;
  appInfo_ = appInfo;
  SetHostApp(appInfo, ID);

  using T = TAFPluginThunks;
  std::memset(&pluginInfo_, 0, sizeof pluginInfo_);
  pluginInfo_.ID = ID;
  pluginInfo_.Icon = Icon;
  pluginInfo_.Descr = Description.c_str();
  pluginInfo_.PluginConfig = OnPluginConfig ? &T::PluginConfig : nullptr;
  pluginInfo_.About = OnAbout ? &T::About : nullptr;
  pluginInfo_.ShutdownPlugin = OnShutdownPlugin ? &T::ShutdownPlugin : nullptr;
  pluginInfo_.SetLocale = &T::SetLocale;
  if (ImageCollection) {
    pluginInfo_.GetPluginImage = &T::GetPluginImage;
    pluginInfo_.ClearImages = &T::ClearImages;
  }

  if (!actions_.empty()) {
    for (const auto& action : actions_) {
      auto* info = NewHostRecord<TAFActionInfo>(appInfo_);
      info->Name = action->Name.c_str();
      info->Icon = action->Icon;
      info->AllowNTService = action->AllowNTService ? kLongTrue : kLongFalse;
      info->Indent = action->Indent > 0 ? 1 : (action->Indent < 0 ? -1 : 0);
      info->ActionType = action->ActionType;
      info->ActionID = action->ActionID().c_str();
      info->ScriptFunctionName = action->ScriptFunctionName.c_str();
      actionInfos_.push_back(info);
    }
    std::memset(&actionsInfo_, 0, sizeof actionsInfo_);
    actionsInfo_.ActionsCount = static_cast<int32_t>(actions_.size());
    actionsInfo_.GetActionInfo = &T::GetActionInfo;
    actionsInfo_.ConfigAction = &T::ConfigAction;
    actionsInfo_.ExecAction = &T::ExecAction;
    actionsInfo_.ActionDescr = &T::ActionDescr;
    actionsInfo_.DeleteAction = &T::DeleteAction;
    actionsInfo_.JobStop = &T::JobStop;
    actionsInfo_.GetActionImage = &T::GetActionImage;
    pluginInfo_.IsActions = kLongTrue;
    pluginInfo_.ActionsInfo = &actionsInfo_;
  }

  if (!events_.empty()) {
    for (const auto& event : events_) {
      auto* info = NewHostRecord<TAFEventInfo>(appInfo_);
      info->Name = event->Name.c_str();
      info->Icon = event->Icon;
      info->AllowNTService = event->AllowNTService ? kLongTrue : kLongFalse;
      info->EventID = event->EventID().c_str();
      eventInfos_.push_back(info);
    }
    std::memset(&eventsInfo_, 0, sizeof eventsInfo_);
    eventsInfo_.EventsCount = static_cast<int32_t>(events_.size());
    eventsInfo_.GetEventInfo = &T::GetEventInfo;
    eventsInfo_.ConfigEvent = &T::ConfigEvent;
    eventsInfo_.StartEvent = &T::StartEvent;
    eventsInfo_.StopEvent = &T::StopEvent;
    eventsInfo_.EventDescr = &T::EventDescr;
    eventsInfo_.DeleteEvent = &T::DeleteEvent;
    eventsInfo_.DuplicateEvent = &T::DuplicateEvent;
    eventsInfo_.GetTriggerImage = &T::GetTriggerImage;
    pluginInfo_.IsEvents = kLongTrue;
    pluginInfo_.EventsInfo = &eventsInfo_;
  }
  g_initialised = true;
  return &pluginInfo_;
}

void* TAFPlugin::Bridge() {
  if (!bridgeRead_) {
    bridgeRead_ = true;
    intptr_t answer = 0;
    if (QueryHostWindow(appInfo_.WHandle, kQmMsgHostBridge, 0, answer) && answer) {
      bridge_ = *reinterpret_cast<void**>(answer);  // kept without a reference of our own
    }
  }
  return bridge_;
}

bool TAFPlugin::ExportImage(int32_t imageIndex, void* buffer, uint32_t* size) const {
  if (!ImageCollection || imageIndex < 0 || static_cast<size_t>(imageIndex) >= ImageCollection->size()) {
    *size = 0;
    return true;
  }
  const auto& bytes = (*ImageCollection)[static_cast<size_t>(imageIndex)].bytes;
  if (bytes.size() > *size) {
    *size = static_cast<uint32_t>(bytes.size());
    return false;
  }
  std::memcpy(buffer, bytes.data(), bytes.size());
  *size = static_cast<uint32_t>(bytes.size());
  return true;
}

}  // namespace qm
