// `qmhost configure ACTION_ID BLOCKFILE` as a user runs it: qmhost.exe (next
// to this program) opens the editor in its own process; the test finds the
// window by its caption, presses Enter or Esc in it, and reads what qmhost
// prints and its exit code.
#include <windows.h>

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "boundary/param_parser.h"
#include "dialogs/sort_editor.h"

namespace qm {
namespace {

struct Outcome {
  std::string output;  // without CR
  DWORD exitCode = 0;
};

std::wstring Beside(const wchar_t* name) {
  wchar_t self[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  std::wstring path = self;
  return path.substr(0, path.find_last_of(L"\\/") + 1) + name;
}

// A window of another process with this caption, once it shows; null after ten seconds.
HWND WaitForWindowOf(DWORD process, const wchar_t* caption) {
  for (int i = 0; i < 200; ++i, Sleep(50)) {
    HWND w = FindWindowW(nullptr, caption);
    DWORD owner = 0;
    if (w && GetWindowThreadProcessId(w, &owner) && owner == process && IsWindowVisible(w)) return w;
  }
  return nullptr;
}

// Runs qmhost configure on `block`, and presses `key` in the window of `caption`.
Outcome Configure(const char* actionId, const std::string& block, const wchar_t* caption, WORD key) {
  const std::wstring blockFile = Beside(L"qmhost_configure_block.txt");
  std::ofstream(blockFile.c_str(), std::ios::binary) << block;
  SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
  HANDLE readEnd = nullptr, writeEnd = nullptr;
  CreatePipe(&readEnd, &writeEnd, &inherit, 0);
  SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = startup.hStdError = writeEnd;
  startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  std::wstring command = L"\"" + Beside(L"qmhost.exe") + L"\" configure " +
                         std::wstring(actionId, actionId + strlen(actionId)) + L" \"" + blockFile + L"\"";
  PROCESS_INFORMATION process{};
  Outcome run;
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process)) {
    ADD_FAILURE() << "qmhost.exe did not start";
    return run;
  }
  CloseHandle(writeEnd);
  if (HWND dialog = WaitForWindowOf(process.dwProcessId, caption)) {
    // The key goes to the focused control; a key that arrives before the
    // dialog takes it is sent again, so that a lost key fails the test
    // instead of leaving it waiting on the pipe.
    for (int attempt = 0; attempt < 5; ++attempt) {
      Sleep(200);
      GUITHREADINFO gui{};
      gui.cbSize = sizeof gui;
      HWND target =
          GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &gui) && gui.hwndFocus ? gui.hwndFocus : dialog;
      PostMessageW(target, WM_KEYDOWN, key, 1);
      PostMessageW(target, WM_KEYUP, key, 1 | (3u << 30));
      if (WaitForSingleObject(process.hProcess, 3000) == WAIT_OBJECT_0 || !IsWindow(dialog)) break;
    }
  } else {
    ADD_FAILURE() << "no editor window";
  }
  if (WaitForSingleObject(process.hProcess, 10000) != WAIT_OBJECT_0) {
    ADD_FAILURE() << "qmhost.exe did not end";
    TerminateProcess(process.hProcess, 99);
    WaitForSingleObject(process.hProcess, 10000);
  }
  // The process has ended: the pipe holds all it wrote.
  char buffer[4096];
  DWORD got = 0;
  while (ReadFile(readEnd, buffer, sizeof buffer, &got, nullptr) && got > 0) {
    for (DWORD i = 0; i < got; ++i) {
      if (buffer[i] != '\r') run.output.push_back(buffer[i]);
    }
  }
  GetExitCodeProcess(process.hProcess, &run.exitCode);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
  CloseHandle(readEnd);
  DeleteFileW(blockFile.c_str());
  return run;
}

TEST(QmhostConfigure, EnterPrintsTheEditedBlockAndEscCancels) {
  const std::string block = "sortcolumn=3\nsortmode=1\n";
  SortEditor model;
  model.Load(TQMParamParser(std::u16string_view(u"sortcolumn=3\r\nsortmode=1\r\n")));
  TQMParamParser saved;
  model.Save(saved);
  std::string expected;
  for (char16_t c : saved.Text()) {
    if (c != u'\r') expected.push_back(static_cast<char>(c));
  }
  const Outcome confirmed = Configure("A_CSV_SORT", block, L"CSV Sort by Column", VK_RETURN);
  EXPECT_EQ(confirmed.output, expected);
  EXPECT_EQ(confirmed.exitCode, 0u);
  const Outcome cancelled = Configure("A_CSV_SORT", block, L"CSV Sort by Column", VK_ESCAPE);
  EXPECT_EQ(cancelled.output, "cancelled\n");
  EXPECT_EQ(cancelled.exitCode, 4u);
}

}  // namespace
}  // namespace qm
