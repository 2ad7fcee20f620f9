// qmcsv.dll as Windows sees it: it loads, its entry point is found by its
// undecorated name, and its version resource carries the project version.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace {

// The library under test, relative to the working directory CTest sets.
std::wstring LibraryPath() {
  const char* name = std::getenv("QMCSV_LIBRARY");
  const std::string narrow = name != nullptr ? name : "qmcsv.dll";
  std::wstring relative(narrow.begin(), narrow.end());
  wchar_t full[MAX_PATH];
  const DWORD length = GetFullPathNameW(relative.c_str(), MAX_PATH, full, nullptr);
  return length > 0 && length < MAX_PATH ? std::wstring(full, length) : relative;
}

std::string Narrow(const wchar_t* text) {
  std::string out;
  for (; *text != L'\0'; ++text) out.push_back(*text < 0x80 ? static_cast<char>(*text) : '?');
  return out;
}

TEST(PluginLibrary, LoadsAndExportsTheEntryPoint) {
  const std::wstring path = LibraryPath();
  HMODULE module = LoadLibraryW(path.c_str());
  ASSERT_NE(module, nullptr) << "LoadLibraryW failed, error " << GetLastError();
  EXPECT_NE(reinterpret_cast<void*>(GetProcAddress(module, "InitQMPlugin")), nullptr) << "no export named InitQMPlugin";
  FreeLibrary(module);
}

TEST(PluginLibrary, FileVersionIsTheProjectVersion) {
  const std::wstring path = LibraryPath();
  DWORD handle = 0;
  const DWORD size = GetFileVersionInfoSizeW(path.c_str(), &handle);
  ASSERT_GT(size, 0u) << "no version resource, error " << GetLastError();
  std::vector<unsigned char> block(size);
  ASSERT_TRUE(GetFileVersionInfoW(path.c_str(), 0, size, block.data()));

  struct {
    const wchar_t* key;
    const char* expected;
  } const strings[] = {
      {L"\\StringFileInfo\\040904B0\\FileVersion", QMCSV_FILE_VERSION},
      {L"\\StringFileInfo\\040904B0\\ProductVersion", QMCSV_FILE_VERSION},
      {L"\\StringFileInfo\\040904B0\\ProductName", "qmcsv"},
      {L"\\StringFileInfo\\040904B0\\FileDescription", "CSV Data plug-in"},
      {L"\\StringFileInfo\\040904B0\\OriginalFilename", "qmcsv.dll"},
  };
  for (const auto& s : strings) {
    void* value = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), s.key, &value, &length)) << Narrow(s.key);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(Narrow(static_cast<const wchar_t*>(value)), s.expected) << Narrow(s.key);
  }

  VS_FIXEDFILEINFO* fixed = nullptr;
  UINT fixed_length = 0;
  ASSERT_TRUE(VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&fixed), &fixed_length));
  ASSERT_GE(fixed_length, sizeof(VS_FIXEDFILEINFO));
  EXPECT_EQ(fixed->dwSignature, 0xFEEF04BDu);
  const std::string numeric =
      std::to_string(HIWORD(fixed->dwFileVersionMS)) + "." + std::to_string(LOWORD(fixed->dwFileVersionMS)) + "." +
      std::to_string(HIWORD(fixed->dwFileVersionLS)) + "." + std::to_string(LOWORD(fixed->dwFileVersionLS));
  EXPECT_EQ(numeric, QMCSV_FILE_VERSION);
  EXPECT_EQ(fixed->dwFileType, static_cast<DWORD>(VFT_DLL));
}

}  // namespace
