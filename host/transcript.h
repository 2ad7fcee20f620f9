// What qmhost prints: one line per event, texts escaped so that every byte
// and control character is visible and the output is the same on all builds.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qmhost {

// Quoted text: printable characters as they are, \r \n \t \\ \" and \xNN for
// other control bytes; non-ASCII characters stay UTF-8.
std::string Quote(std::u16string_view text);
// As Quote, but a text longer than 1000 characters shows its first 40 and
// its length, to keep transcripts of huge values readable.
std::string QuoteValue(std::u16string_view text);
// Quoted bytes: every byte outside printable ASCII as \xNN.
std::string QuoteBytes(std::string_view bytes);

// One transcript line to standard output, or to the capture when one is set.
void Print(const std::string& line);
// False once a transcript line could not be written (a closed pipe, a full disk).
bool TranscriptWritten();
// One diagnostic line to standard error (the transcript stays on stdout).
void PrintError(const std::string& line);
// Tests read the transcript: lines go to *lines until this is called with null.
void CaptureTranscript(std::vector<std::string>* lines);

// A zero-terminated text from the plug-in as a view (null: empty).
inline std::u16string_view Z(const char16_t* text) {
  if (!text) return {};
  size_t n = 0;
  while (text[n]) ++n;
  return {text, n};
}
const char* LevelName(int infoType);

}  // namespace qmhost
