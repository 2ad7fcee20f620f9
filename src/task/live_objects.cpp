#include "task/live_objects.h"

#include <utility>

namespace qm {

namespace {
// Made at the first use (the data module's construction) and gone with
// Release(), which the data module calls while the library unloads: a
// static of its own would already be destroyed by then.
LiveObjects* g_registry = nullptr;
}  // namespace

LiveObjects& LiveObjects::Instance() {
  if (!g_registry) g_registry = new LiveObjects();
  return *g_registry;
}

void LiveObjects::Release() {
  if (!g_registry) return;
  g_registry->DestroyAll();
  delete g_registry;
  g_registry = nullptr;
}

void LiveObjects::AddErased(void* object, const std::type_info& kind, void (*destroy)(void*)) {
  std::lock_guard lock(mutex_);
  objects_.try_emplace(reinterpret_cast<uintptr_t>(object), Entry{&kind, destroy});
}

void LiveObjects::Remove(const void* object) {
  std::lock_guard lock(mutex_);
  objects_.erase(reinterpret_cast<uintptr_t>(object));
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
  // Outside the lock: a destructor may remove itself.
  for (const auto& [address, entry] : objects) entry.destroy(reinterpret_cast<void*>(address));
}

}  // namespace qm
