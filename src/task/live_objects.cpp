#include "task/live_objects.h"

#include <utility>

namespace qm {

namespace {
// Made at the first use (the data module's construction) and gone with
// Release(), which the data module calls while the library unloads. A plain
// pointer, not a std::unique_ptr: a static with a destructor of its own might
// already be destroyed by then.
LiveObjects* g_registry = nullptr;
}  // namespace

LiveObjects& LiveObjects::Instance() {
  if (!g_registry) g_registry = std::make_unique<LiveObjects>().release();
  return *g_registry;
}

void LiveObjects::Release() {
  const std::unique_ptr<LiveObjects> registry(std::exchange(g_registry, nullptr));
  if (registry) registry->DestroyAll();
}

void LiveObjects::AddErased(Owned object, const std::type_info& kind) {
  const auto number = reinterpret_cast<uintptr_t>(object.get());
  std::lock_guard lock(mutex_);
  objects_.try_emplace(number, Entry{&kind, std::move(object)});
}

LiveObjects::Owned LiveObjects::TakeErased(const void* object, const std::type_info& kind) {
  std::lock_guard lock(mutex_);
  const auto found = objects_.find(reinterpret_cast<uintptr_t>(object));
  if (!object || found == objects_.end() || *found->second.kind != kind) return Owned(nullptr, nullptr);
  Owned taken = std::move(found->second.object);
  objects_.erase(found);
  return taken;
}

void* LiveObjects::FindErased(uint64_t number, const std::type_info& kind) {
  if (number == 0 || number > UINTPTR_MAX) return nullptr;
  std::lock_guard lock(mutex_);
  const auto found = objects_.find(static_cast<uintptr_t>(number));
  if (found == objects_.end() || *found->second.kind != kind) return nullptr;
  return reinterpret_cast<void*>(found->first);
}

void LiveObjects::DestroyAll() {
  std::unordered_map<uintptr_t, Entry> objects;
  {
    std::lock_guard lock(mutex_);
    objects.swap(objects_);
  }
  // Outside the lock: a destructor may use the registry.
  objects.clear();
}

}  // namespace qm
