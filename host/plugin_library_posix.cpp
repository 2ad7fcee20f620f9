#include <dlfcn.h>
#include <limits.h>
#include <stdlib.h>

#include "core/utf.h"
#include "plugin_library.h"

namespace qmhost {

bool PluginLibrary::Load(const std::string& path, std::string& error) {
  handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle_) {
    error = dlerror();
    return false;
  }
  entry_ = reinterpret_cast<TInitQMPlugin>(dlsym(handle_, "InitQMPlugin"));
  if (!entry_) {
    error = "the library does not export InitQMPlugin";
    return false;
  }
  return true;
}

void PluginLibrary::Unload() {
  if (handle_) dlclose(handle_);
  handle_ = nullptr;
  entry_ = nullptr;
}

std::string DefaultPluginPath(const char* argv0) {
  std::string self = argv0;
  const size_t slash = self.find_last_of('/');
  return (slash == std::string::npos ? std::string("./") : self.substr(0, slash + 1)) + "libqmcsv.so";
}

std::u16string FolderOf(const std::string& path) {
  char full[PATH_MAX];
  std::string absolute = realpath(path.c_str(), full) ? std::string(full) : path;
  return qm::Utf8ToUtf16(absolute.substr(0, absolute.find_last_of('/') + 1));
}

}  // namespace qmhost
