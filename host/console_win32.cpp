#include <fcntl.h>
#include <io.h>
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include <cstdio>

#include "console.h"
#include "core/utf.h"

namespace qmhost {

std::vector<std::string> Utf8Arguments(int argc, char** argv) {
  int count = 0;
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
  if (!wide) return {argv, argv + argc};
  std::vector<std::string> words;
  for (int i = 0; i < count; ++i) {
    const std::wstring word(wide[i]);
    words.push_back(qm::Utf16ToUtf8(std::u16string(word.begin(), word.end())));
  }
  LocalFree(wide);
  return words;
}

void PrepareConsole() {
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  // The transcript is UTF-8: a console window shows it as such.
  SetConsoleOutputCP(CP_UTF8);
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
}

bool StderrIsTerminal() { return _isatty(_fileno(stderr)) != 0; }

std::filesystem::path PathOf(const std::string& utf8) {
  const std::u16string text = qm::Utf8ToUtf16(utf8);
  return std::filesystem::path(std::wstring(text.begin(), text.end()));
}

std::string SystemErrorText(unsigned long code) {
  wchar_t* text = nullptr;
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, code, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  std::wstring message(text ? text : L"", length);
  if (text) LocalFree(text);
  while (!message.empty() && (message.back() == L'\n' || message.back() == L'\r' || message.back() == L'.')) {
    message.pop_back();
  }
  if (message.empty()) return "system error " + std::to_string(code);
  return qm::Utf16ToUtf8(std::u16string(message.begin(), message.end())) + " (error " + std::to_string(code) + ")";
}

}  // namespace qmhost
