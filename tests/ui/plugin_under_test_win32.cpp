#include "plugin_under_test_win32.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>

#include "beep_recorder_win32.h"

namespace qm::test {

namespace {

std::map<void*, int32_t> g_blocks;
std::u16string g_picked = u"{picked}";

void GetMemory(void** p, int32_t size) {
  *p = std::calloc(static_cast<size_t>(size), 1);
  g_blocks[*p] = size;
}

void FreeMemory(void** p, int32_t size) {
  const auto block = g_blocks.find(*p);
  ASSERT_NE(block, g_blocks.end()) << "a block the host never handed out";
  EXPECT_EQ(block->second, size) << "a block returned with another size";
  g_blocks.erase(block);
  std::free(*p);
  *p = nullptr;
}

LongBool SelectVar(char16_t* buffer, int32_t size) {
  const size_t n = std::min(g_picked.size(), static_cast<size_t>(size) - 1);
  std::copy_n(g_picked.begin(), n, buffer);
  buffer[n] = 0;
  return kLongTrue;
}

void InfoOut(int32_t, const char16_t*) {}

int g_scale = 100;

// The host's main window: the editors' owner, answering the scale query.
LRESULT CALLBACK HostWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == kQmMsgHostSetting && wParam == kQmSettingScale) return g_scale;
  return DefWindowProcW(window, message, wParam, lParam);
}

HWND MakeHostWindow() {
  WNDCLASSW wc{};
  wc.lpfnWndProc = &HostWindowProc;
  wc.hInstance = GetModuleHandleW(nullptr);
  wc.lpszClassName = L"QmcsvEditorsTestHost";
  RegisterClassW(&wc);
  return CreateWindowW(wc.lpszClassName, L"host", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr, nullptr, wc.hInstance,
                       nullptr);
}

}  // namespace

void PluginUnderTest::SetPickedVariable(std::u16string text) { g_picked = std::move(text); }
void PluginUnderTest::SetScale(int percent) { g_scale = percent; }
int PluginUnderTest::Scale() { return g_scale; }

PluginUnderTest::PluginUnderTest() {
  static TAFAppInfo app{};
  app.Ver = u"9.5.0.1";
  app.InfoOut = &InfoOut;
  app.QMGetMemory = &GetMemory;
  app.QMFreeMemory = &FreeMemory;
  app.SelectVar = &SelectVar;
  app.WHandle = MakeHostWindow();
  library_ = LoadLibraryW(L"qmcsv.dll");
  if (!library_) {
    ADD_FAILURE() << "qmcsv.dll did not load";
    return;
  }
  if (!RecordBeeps(static_cast<HMODULE>(library_))) ADD_FAILURE() << "qmcsv.dll sounds no MessageBeep";
  auto entry = reinterpret_cast<TInitQMPlugin>(
      reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library_), "InitQMPlugin")));
  info_ = entry ? entry(&app) : nullptr;
  if (!info_ || !info_->ActionsInfo) ADD_FAILURE() << "InitQMPlugin gave no actions";
}

PluginUnderTest::~PluginUnderTest() {
  if (library_) FreeLibrary(static_cast<HMODULE>(library_));
}

std::optional<std::u16string> PluginUnderTest::Configure(int32_t index, const std::u16string& block) {
  if (!info_ || !info_->ActionsInfo) return std::nullopt;
  ForgetBeeps();
  // The step's block as the host keeps it: a block from its own allocator.
  void* memory = nullptr;
  const auto bytes = static_cast<int32_t>((block.size() + 1) * sizeof(char16_t));
  GetMemory(&memory, bytes);
  std::copy(block.begin(), block.end(), static_cast<char16_t*>(memory));
  TAFActionParams params{bytes, static_cast<char16_t*>(memory), 1, 0, kLongFalse};
  const bool confirmed = info_->ActionsInfo->ConfigAction(index, &params) != kLongFalse;
  std::optional<std::u16string> result;
  if (confirmed) {
    result = std::u16string(params.PPtr);
  } else {
    EXPECT_EQ(params.PPtr, memory) << "a cancelled editor replaced the block";
    EXPECT_EQ(std::u16string(params.PPtr), block) << "a cancelled editor changed the block";
  }
  void* last = params.PPtr;
  FreeMemory(&last, params.Size);
  return result;
}

}  // namespace qm::test
