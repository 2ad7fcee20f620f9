#include <windows.h>

#include <vector>

#include "platform/module_info.h"

namespace qm {

namespace {

HMODULE OwnModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&OwnModule), &module);
  return module;
}

std::u16string FromWide(const wchar_t* text, size_t length) {
  return std::u16string(reinterpret_cast<const char16_t*>(text), length);
}

}  // namespace

std::u16string OwnModuleFileName() {
  std::vector<wchar_t> buffer(10240);
  const DWORD length = GetModuleFileNameW(OwnModule(), buffer.data(), static_cast<DWORD>(buffer.size()));
  return FromWide(buffer.data(), length);
}

std::u16string OwnFileVersion() {
  const std::u16string path = OwnModuleFileName();
  const auto* wpath = reinterpret_cast<const wchar_t*>(path.c_str());
  DWORD handle = 0;
  const DWORD size = GetFileVersionInfoSizeW(wpath, &handle);
  if (size == 0) return {};
  std::vector<unsigned char> data(size);
  if (!GetFileVersionInfoW(wpath, 0, size, data.data())) return {};
  // The first translation names the string table to read.
  struct Translation {
    WORD language;
    WORD codePage;
  };
  Translation* translations = nullptr;
  UINT length = 0;
  wchar_t key[64] = L"\\StringFileInfo\\040904B0\\FileVersion";
  if (VerQueryValueW(data.data(), L"\\VarFileInfo\\Translation", reinterpret_cast<void**>(&translations), &length) &&
      length >= sizeof(Translation)) {
    wsprintfW(key, L"\\StringFileInfo\\%04x%04x\\FileVersion", translations[0].language, translations[0].codePage);
  }
  wchar_t* value = nullptr;
  if (!VerQueryValueW(data.data(), key, reinterpret_cast<void**>(&value), &length) || !value) return {};
  return FromWide(value, wcslen(value));
}

}  // namespace qm
