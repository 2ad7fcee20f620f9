#include <windows.h>

#include <cstdio>

#include "console.h"
#include "core/utf.h"
#include "plugin_library.h"

namespace qmhost {

namespace {

std::wstring Wide(const std::string& utf8) {
  const std::u16string text = qm::Utf8ToUtf16(utf8);
  return std::wstring(text.begin(), text.end());
}

}  // namespace

bool PluginLibrary::Load(const std::string& path, std::string& error) {
  handle_ = LoadLibraryW(Wide(path).c_str());
  if (!handle_) {
    error = SystemErrorText(GetLastError());
    return false;
  }
  entry_ = reinterpret_cast<TInitQMPlugin>(
      reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), "InitQMPlugin")));
  if (!entry_) {
    error = "the library does not export InitQMPlugin";
    return false;
  }
  return true;
}

void PluginLibrary::Unload() {
  if (handle_) FreeLibrary(static_cast<HMODULE>(handle_));
  handle_ = nullptr;
  entry_ = nullptr;
}

std::string DefaultPluginPath(const char* argv0) {
  std::string self = argv0;
  const size_t slash = self.find_last_of("\\/");
  return (slash == std::string::npos ? std::string() : self.substr(0, slash + 1)) + "qmcsv.dll";
}

std::u16string FolderOf(const std::string& path) {
  wchar_t full[MAX_PATH * 4];
  const DWORD length = GetFullPathNameW(Wide(path).c_str(), MAX_PATH * 4, full, nullptr);
  std::u16string absolute(reinterpret_cast<const char16_t*>(full), length);
  return absolute.substr(0, absolute.find_last_of(u"\\/") + 1);
}

}  // namespace qmhost
