// The one exported function of the library.
#include <memory>

#include "plugin/csv_data_module.h"
#include "boundary/param_parser.h"
#include "boundary/version_compare.h"

#ifdef _WIN32
#define QMCSV_EXPORT __declspec(dllexport)
#else
#define QMCSV_EXPORT __attribute__((visibility("default")))
#endif

namespace {

// Lives until the library unloads; its destruction returns the info records.
std::unique_ptr<qm::TCSVDataDM> g_dataModule;

}  // namespace

extern "C" QMCSV_EXPORT TAFPluginInfo* InitQMPlugin(TAFAppInfo* appInfo) {
  auto module = std::make_unique<qm::TCSVDataDM>();
  if (qm::CompareVersions(qm::ZText(appInfo->Ver), u"9.5") < 0) {
    if (!g_dataModule) g_dataModule = std::move(module);
    return nullptr;  // an older host gets nothing, and is told nothing
  }
  // A second initialisation raises here and leaves the first one in place.
  TAFPluginInfo* info = module->Plugin.Initialize(*appInfo);
  module->ReadHostSettings();
  g_dataModule = std::move(module);
  return info;
}
