// What tasks leave behind goes when the library unloads: a Data Loop whose
// task stopped inside it, and a table nobody freed. A program of its own, as a
// library initialises one data module only.
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "loop/csv_loop.h"
#include "plugin/csv_data_module.h"
#include "table/simple_csv_object.h"
#include "task/live_objects.h"

namespace qm {
namespace {

void GetMemory(void** p, int32_t size) { *p = std::malloc(static_cast<size_t>(size)); }
void FreeMemory(void** p, int32_t) {
  std::free(*p);
  *p = nullptr;
}

// A task interface that only counts its references.
struct CountedTask {
  void* const* table;
  int64_t references = 0;
  static int32_t QueryInterface(void* self, const QmGuid*, void** out) {
    ++static_cast<CountedTask*>(self)->references;
    *out = self;
    return 0;
  }
  static uint32_t AddRef(void* self) { return static_cast<uint32_t>(++static_cast<CountedTask*>(self)->references); }
  static uint32_t Release(void* self) { return static_cast<uint32_t>(--static_cast<CountedTask*>(self)->references); }
};

TEST(PluginUnload, FreesLoopsAndTablesTasksLeftBehind) {
  static void* const methods[] = {reinterpret_cast<void*>(&CountedTask::QueryInterface),
                                  reinterpret_cast<void*>(&CountedTask::AddRef),
                                  reinterpret_cast<void*>(&CountedTask::Release)};
  CountedTask task{methods};
  TAFAppInfo app{};
  app.Ver = u"9.5";
  app.QMGetMemory = &GetMemory;
  app.QMFreeMemory = &FreeMemory;

  auto module = std::make_unique<TCSVDataDM>();
  ASSERT_NE(module->Plugin.Initialize(app), nullptr);
  uint64_t loopNumber = 0;
  {
    const QmTaskBridge bridge = QmTaskBridge::Cast(&task);
    loopNumber = LiveObjects::NumberOf(LiveObjects::Instance().Keep(std::make_unique<TCSVLoopClass>(bridge, 1, 0)));
  }
  const TSimpleCSVDataClass* table = LiveObjects::Instance().Keep(std::make_unique<TSimpleCSVDataClass>());
  EXPECT_EQ(task.references, 1) << "the saved loop holds the task";

  // A module that was never initialised (a refused second one) frees nothing.
  { TCSVDataDM refused; }
  EXPECT_NE(LiveObjects::Instance().Find<TCSVLoopClass>(loopNumber), nullptr);

  module.reset();
  EXPECT_EQ(task.references, 0) << "the loop was destroyed and let go of the task";
  EXPECT_EQ(LiveObjects::Instance().Find<TCSVLoopClass>(loopNumber), nullptr);
  EXPECT_EQ(LiveObjects::Instance().Find<TSimpleCSVDataClass>(LiveObjects::NumberOf(table)), nullptr);
}

}  // namespace
}  // namespace qm
