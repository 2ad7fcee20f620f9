// Every object the plug-in keeps for running tasks between two calls (the
// task's table, a saved Data Loop), by the number a task-private variable
// holds for it. A number is turned back into an object only when it names a
// live object of the asked-for kind, so a stale, forged or mangled value reads
// as "no object" instead of leading into freed or foreign memory. What is
// still alive when the library unloads is destroyed then.
#pragma once

#include <cstdint>
#include <mutex>
#include <typeinfo>
#include <unordered_map>

namespace qm {

class LiveObjects {
 public:
  // The plug-in's one registry.
  static LiveObjects& Instance();
  // Destroys every object still registered, then the registry itself (the
  // library's unload); a later Instance() starts afresh.
  static void Release();

  // Registers an object the registry may destroy at unload (registering it
  // again changes nothing). The kind is the exact type it is asked for as.
  template <typename T>
  void Add(T* object) {
    AddErased(object, typeid(T), [](void* p) { delete static_cast<T*>(p); });
  }
  // Forgets an object without destroying it; an unknown one is ignored.
  void Remove(const void* object);
  // The live object of kind T with this number, or null.
  template <typename T>
  T* Find(uint64_t number) {
    return static_cast<T*>(FindErased(number, typeid(T)));
  }
  // Destroys every object still registered (the library's unload).
  void DestroyAll();

  // The number that stands for an object in a task-private variable.
  static uint64_t NumberOf(const void* object) noexcept { return reinterpret_cast<uintptr_t>(object); }

 private:
  struct Entry {
    const std::type_info* kind;
    void (*destroy)(void*);
  };
  void AddErased(void* object, const std::type_info& kind, void (*destroy)(void*));
  void* FindErased(uint64_t number, const std::type_info& kind);

  std::mutex mutex_;  // tasks run on host threads of their own
  std::unordered_map<uintptr_t, Entry> objects_;
};

}  // namespace qm
