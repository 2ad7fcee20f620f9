// Every object the plug-in keeps for running tasks between two calls (the
// task's table, a saved Data Loop), by the number a task-private variable
// holds for it. A number is turned back into an object only when it names a
// live object of the asked-for kind, so a stale, forged or mangled value reads
// as "no object" instead of leading into freed or foreign memory. What is
// still alive when the library unloads is destroyed then.
#pragma once

#include <cstdint>
#include <memory>
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

  // Takes an object into the registry's keeping: it lives until Take() hands
  // it back or the library unloads. The kind is the exact type it is asked
  // for as. Returns the object, for the caller's use while it lives.
  template <typename T>
  T* Keep(std::unique_ptr<T> object) {
    T* kept = object.get();
    if (kept)
      AddErased(Owned(object.release(), [](void* p) { std::default_delete<T>()(static_cast<T*>(p)); }), typeid(T));
    return kept;
  }
  // Hands a kept object back to its caller, who now owns it; null when
  // `object` is not kept as a T (null, unknown or already taken).
  template <typename T>
  std::unique_ptr<T> Take(T* object) {
    return std::unique_ptr<T>(static_cast<T*>(TakeErased(object, typeid(T)).release()));
  }
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
  using Owned = std::unique_ptr<void, void (*)(void*)>;
  struct Entry {
    const std::type_info* kind;
    Owned object;
  };
  void AddErased(Owned object, const std::type_info& kind);
  Owned TakeErased(const void* object, const std::type_info& kind);
  void* FindErased(uint64_t number, const std::type_info& kind);

  std::mutex mutex_;  // tasks run on host threads of their own
  std::unordered_map<uintptr_t, Entry> objects_;
};

}  // namespace qm
