#include "beep_recorder_win32.h"

#include <atomic>
#include <cstring>

namespace qm::test {

namespace {

using MessageBeepFunction = BOOL(WINAPI*)(UINT);

std::atomic<int> g_lastBeep{-1};
MessageBeepFunction g_messageBeep = nullptr;

BOOL WINAPI RecordedBeep(UINT type) {
  g_lastBeep = static_cast<int>(type);
  return g_messageBeep ? g_messageBeep(type) : TRUE;
}

}  // namespace

bool RecordBeeps(HMODULE module) {
  auto* base = reinterpret_cast<BYTE*>(module);
  const auto& dos = *reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto& nt = *reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos.e_lfanew);
  const auto& imports = nt.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  if (!imports.VirtualAddress) return false;
  for (auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress); library->Name;
       ++library) {
    if (_stricmp(reinterpret_cast<const char*>(base + library->Name), "user32.dll") != 0) continue;
    const DWORD names = library->OriginalFirstThunk ? library->OriginalFirstThunk : library->FirstThunk;
    auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + names);
    auto* slot = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
    for (; name->u1.AddressOfData; ++name, ++slot) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      const auto* byName = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
      if (std::strcmp(reinterpret_cast<const char*>(byName->Name), "MessageBeep") != 0) continue;
      DWORD protection = 0;
      if (!VirtualProtect(&slot->u1.Function, sizeof slot->u1.Function, PAGE_READWRITE, &protection)) return false;
      if (slot->u1.Function != reinterpret_cast<ULONG_PTR>(&RecordedBeep)) {
        g_messageBeep = reinterpret_cast<MessageBeepFunction>(slot->u1.Function);
        slot->u1.Function = reinterpret_cast<ULONG_PTR>(&RecordedBeep);
      }
      VirtualProtect(&slot->u1.Function, sizeof slot->u1.Function, protection, &protection);
      return true;
    }
  }
  return false;
}

int LastBeep() { return g_lastBeep; }

void ForgetBeeps() { g_lastBeep = -1; }

}  // namespace qm::test
