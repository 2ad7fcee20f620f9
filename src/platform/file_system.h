// File access and path helpers. Paths are UTF-16; Windows opens them with the
// wide APIs, the native build converts them to UTF-8 and reads "\" as "/". Failures raise
// EFileError with "Cannot open file ..." (reading) or "Cannot create file ..."
// (writing) followed by the reason; the common reasons read the same in both
// builds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qm {

// Reads a file from the start, a piece at a time.
class FileReader {
 public:
  explicit FileReader(std::u16string_view path);  // raises EFileError
  FileReader(const FileReader&) = delete;
  FileReader& operator=(const FileReader&) = delete;
  ~FileReader();

  // The size when opened, in bytes.
  uint64_t Size() const noexcept { return size_; }
  // Reads up to `count` bytes; returns fewer only at the end of the file.
  size_t Read(void* buffer, size_t count);

 private:
  std::u16string path_;
  intptr_t handle_ = -1;
  uint64_t size_ = 0;
};

// Creates a file, replacing an existing one, and writes it a piece at a time.
// The data goes to a partial file beside it first, which replaces the file
// only when Close() succeeds: a write that fails half way, or a writer that
// is destroyed without Close(), leaves the earlier file as it was. A path
// that is a symbolic link is written through to the file it points to, and a
// replaced file keeps its permissions.
class FileWriter {
 public:
  explicit FileWriter(std::u16string_view path);  // raises EFileError
  FileWriter(const FileWriter&) = delete;
  FileWriter& operator=(const FileWriter&) = delete;
  ~FileWriter();

  void Write(const void* data, size_t count);
  // Stores the data and puts the file in place; raises when it cannot.
  void Close();

  // The name of the partial file written for `path`.
  static std::u16string PartialName(std::u16string_view path) { return std::u16string(path) + u".qmcsv-part"; }

 private:
  std::u16string path_;
  std::u16string target_;  // the path with its links followed: the file replaced
  intptr_t handle_ = -1;
};

// The whole file as bytes.
std::string ReadFileBytes(std::u16string_view path);
// Replaces the file with `bytes`.
void WriteFileBytes(std::u16string_view path, std::string_view bytes);

// Creates the folder and every missing parent. An empty path and a bare drive
// ("C:") count as success; false when a folder cannot be created.
bool ForceFolders(std::u16string_view path);
bool DirectoryExists(std::u16string_view path);
// Creates one folder whose parent exists; false on failure.
bool CreateOneFolder(std::u16string_view path);

// The folder part of a path: everything before the last "\" or "/", keeping
// the separator of a root ("C:\", "\"); the empty text when there is none.
std::u16string ExtractFileDir(std::u16string_view path);

// Empty text or one ending in "\" unchanged; a single letter gets ":\";
// otherwise "\" is appended (also after a trailing "/").
std::u16string AddTrailingDelimiter(std::u16string_view path);
// Texts shorter than 2 characters, texts not ending in "\" or "/", and a drive
// root such as "C:\" unchanged; otherwise the last character is removed.
std::u16string RemoveTrailingDelimiter(std::u16string_view path);
// The text with every `ch` deleted.
std::u16string RemoveChar(std::u16string_view text, char16_t ch);

}  // namespace qm
