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
    std::string utf8;
    for (size_t k = 0; k < word.size(); ++k) {
      const auto unit = static_cast<char16_t>(word[k]);
      const bool high = unit >= 0xD800 && unit <= 0xDBFF;
      const bool paired = high && k + 1 < word.size() && word[k + 1] >= 0xDC00 && word[k + 1] <= 0xDFFF;
      if (paired) {
        utf8 += qm::Utf16ToUtf8(std::u16string{unit, static_cast<char16_t>(word[++k])});
      } else if (unit >= 0xD800 && unit <= 0xDFFF) {
        // A lone surrogate is no text: kept as its three bytes, which the
        // argument check then refuses, instead of a silent U+FFFD.
        utf8 += static_cast<char>(0xE0 | (unit >> 12));
        utf8 += static_cast<char>(0x80 | ((unit >> 6) & 0x3F));
        utf8 += static_cast<char>(0x80 | (unit & 0x3F));
      } else {
        utf8 += qm::Utf16ToUtf8(std::u16string_view(&unit, 1));
      }
    }
    words.push_back(std::move(utf8));
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
