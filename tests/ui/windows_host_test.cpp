// The Windows side of the boundary: the settings queries sent to the host's
// window, and enabling dialog controls. Runs under Wine, with real windows.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

#include "boundary/host_services.h"
#include "plugin/csv_data_module.h"
#include "ui/enable_controls.h"

namespace qm {
namespace {

// What the host window answers.
intptr_t g_scale = 150;
int g_bridgeQueries = 0;
void* g_bridgeObject = reinterpret_cast<void*>(0x1234);
const wchar_t kFolder[] = L"C:\\Data";
const wchar_t kText[] = L"host text";

LRESULT CALLBACK HostWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == kQmMsgHostSetting) {
    switch (wParam) {
      case kQmSettingScale: return g_scale;
      case kQmSettingFolder: return reinterpret_cast<LRESULT>(kFolder);
      case kQmSettingText: return reinterpret_cast<LRESULT>(kText);
      case kQmSettingNumber: return 42;
      default: return 0;
    }
  }
  if (message == kQmMsgHostBridge) {
    ++g_bridgeQueries;
    return reinterpret_cast<LRESULT>(&g_bridgeObject);
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

std::map<void*, int32_t> g_blocks;
void GetMemory(void** p, int32_t size) {
  *p = std::malloc(static_cast<size_t>(size));
  g_blocks[*p] = size;
}
void FreeMemory(void** p, int32_t size) {
  EXPECT_EQ(g_blocks[*p], size);
  g_blocks.erase(*p);
  std::free(*p);
}

HWND MakeHostWindow() {
  WNDCLASSW wc{};
  wc.lpfnWndProc = &HostWindowProc;
  wc.hInstance = GetModuleHandleW(nullptr);
  wc.lpszClassName = L"QmcsvTestHost";
  RegisterClassW(&wc);
  return CreateWindowW(L"QmcsvTestHost", L"host", 0, 0, 0, 10, 10, HWND_MESSAGE, nullptr, wc.hInstance, nullptr);
}

TEST(HostWindow, SettingsScaleAndBridgeComeFromTheHostWindow) {
  HWND host = MakeHostWindow();
  ASSERT_NE(host, nullptr);
  TAFAppInfo app{};
  app.Ver = u"9.5";
  app.WHandle = host;
  app.QMGetMemory = &GetMemory;
  app.QMFreeMemory = &FreeMemory;
  {
    TCSVDataDM module;
    ASSERT_NE(module.Plugin.Initialize(app), nullptr);
    module.ReadHostSettings();
    EXPECT_EQ(module.Settings.number, 42);
    EXPECT_EQ(module.Settings.folder, u"C:\\Data\\CSVData");  // the description without blanks
    EXPECT_EQ(module.Settings.text, u"host text");

    const std::pair<intptr_t, int32_t> scales[] = {{99, 100}, {100, 100}, {250, 250}, {251, 100}, {175, 175}};
    for (const auto& [answer, expected] : scales) {
      g_scale = answer;
      EXPECT_EQ(DefaultScale(), expected) << answer;
    }
    EXPECT_EQ(module.Plugin.Bridge(), g_bridgeObject);
    EXPECT_EQ(module.Plugin.Bridge(), g_bridgeObject);
    EXPECT_EQ(g_bridgeQueries, 1);  // read once, then kept
  }
  EXPECT_TRUE(g_blocks.empty());  // the info records went back at destruction
  DestroyWindow(host);
}

TEST(EnableControls, LabelsFieldsAndContainers) {
  INITCOMMONCONTROLSEX controls{sizeof(INITCOMMONCONTROLSEX), ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&controls);
  HINSTANCE instance = GetModuleHandleW(nullptr);
  WNDCLASSW wc{};
  wc.lpfnWndProc = &DefWindowProcW;
  wc.hInstance = instance;
  wc.lpszClassName = L"QmcsvTestDialog";
  RegisterClassW(&wc);
  HWND dialog = CreateWindowW(L"QmcsvTestDialog", L"", WS_POPUP, 0, 0, 300, 200, nullptr, nullptr, instance, nullptr);
  ASSERT_NE(dialog, nullptr);
  auto child = [&](const wchar_t* cls, HWND parent) {
    return CreateWindowW(cls, L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, parent, nullptr, instance, nullptr);
  };
  // A panel of its own (a container) holding a label, its edit field and a list view.
  HWND panel =
      CreateWindowW(L"Button", L"", WS_CHILD | BS_GROUPBOX, 0, 0, 200, 100, dialog, nullptr, instance, nullptr);
  HWND label = child(L"Static", panel);
  HWND edit = child(L"Edit", panel);
  HWND list = child(WC_LISTVIEWW, panel);
  HWND combo = child(L"ComboBox", dialog);
  SetLabelFor(label, edit);

  EnableControls(label, false);
  EXPECT_FALSE(IsWindowEnabled(label));
  EXPECT_FALSE(IsWindowEnabled(edit));
  EXPECT_EQ(ControlBackground(edit), COLOR_BTNFACE);
  EXPECT_TRUE(IsWindowEnabled(list));

  EnableControls(dialog, false);
  for (HWND w : {panel, label, edit, list, combo}) EXPECT_FALSE(IsWindowEnabled(w));
  EXPECT_EQ(static_cast<COLORREF>(SendMessageW(list, LVM_GETBKCOLOR, 0, 0)), GetSysColor(COLOR_BTNFACE));
  EXPECT_EQ(ControlBackground(combo), COLOR_BTNFACE);

  EnableControls(dialog, true);
  for (HWND w : {dialog, panel, label, edit, list, combo}) EXPECT_TRUE(IsWindowEnabled(w));
  EXPECT_EQ(ControlBackground(edit), COLOR_WINDOW);
  EXPECT_EQ(static_cast<COLORREF>(SendMessageW(list, LVM_GETBKCOLOR, 0, 0)), GetSysColor(COLOR_WINDOW));
  DestroyWindow(dialog);
}

}  // namespace
}  // namespace qm
