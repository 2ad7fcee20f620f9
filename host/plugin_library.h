// Loading and unloading the plug-in library.
#pragma once

#include <string>

#include "abi/host_abi.h"

namespace qmhost {

class PluginLibrary {
 public:
  // False with `error` set when the library or its entry cannot be found.
  bool Load(const std::string& path, std::string& error);
  void Unload();
  TInitQMPlugin Entry() const { return entry_; }
  ~PluginLibrary() { Unload(); }

 private:
  void* handle_ = nullptr;
  TInitQMPlugin entry_ = nullptr;
};

// The library next to the qmhost program.
std::string DefaultPluginPath(const char* argv0);
// Folder of a file with a trailing separator, as the platform writes paths.
std::u16string FolderOf(const std::string& path);

}  // namespace qmhost
