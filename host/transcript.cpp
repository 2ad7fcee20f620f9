#include "transcript.h"

#include <cstdio>

#include "core/utf.h"

namespace qmhost {

namespace {

void Escape(unsigned char c, std::string& out, bool asciiOnly) {
  static const char* hex = "0123456789abcdef";
  switch (c) {
    case '\r': out += "\\r"; return;
    case '\n': out += "\\n"; return;
    case '\t': out += "\\t"; return;
    case '\\': out += "\\\\"; return;
    case '"': out += "\\\""; return;
    default: break;
  }
  if (c < 0x20 || c == 0x7F || (asciiOnly && c >= 0x80)) {
    out += "\\x";
    out += hex[c >> 4];
    out += hex[c & 15];
  } else {
    out += static_cast<char>(c);
  }
}

std::vector<std::string>* g_capture = nullptr;
bool g_writeFailed = false;

}  // namespace

std::string Quote(std::u16string_view text) {
  std::string out = "\"";
  for (unsigned char c : qm::Utf16ToUtf8(text)) Escape(c, out, false);
  return out + "\"";
}

std::string QuoteValue(std::u16string_view text) {
  if (text.size() <= 1000) return Quote(text);
  std::string out = Quote(text.substr(0, 40));
  out.insert(out.size() - 1, "...");
  return out + " (" + std::to_string(text.size()) + " characters)";
}

std::string QuoteBytes(std::string_view bytes) {
  std::string out = "\"";
  for (unsigned char c : bytes) Escape(c, out, true);
  return out + "\"";
}

void Print(const std::string& line) {
  if (g_capture) {
    g_capture->push_back(line);
    return;
  }
  const bool written = std::fwrite(line.data(), 1, line.size(), stdout) == line.size() &&
                       std::fputc('\n', stdout) != EOF && std::fflush(stdout) == 0;
  if (!written) g_writeFailed = true;
}

bool TranscriptWritten() { return !g_writeFailed; }

void PrintError(const std::string& line) {
  // One write, so that lines from the progress thread never cut into it.
  const std::string text = line + "\n";
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::fflush(stderr);
}

void CaptureTranscript(std::vector<std::string>* lines) { g_capture = lines; }

const char* LevelName(int infoType) {
  switch (infoType) {
    case 0: return "info";
    case 1: return "warning";
    case 2: return "error";
    case 3: return "neutral";
    case 4: return "debug";
    default: return "level?";
  }
}

}  // namespace qmhost
