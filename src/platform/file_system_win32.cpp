// Windows: the wide file APIs. The reason of a failure is the system's own
// message text, trimmed as the runtime trims it (no trailing blanks or period).
#include <windows.h>

#include "core/errors.h"
#include "core/messages.h"
#include "platform/file_system.h"

namespace qm {

namespace {

std::wstring NativePath(std::u16string_view path) { return std::wstring(path.begin(), path.end()); }

std::u16string Reason(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND: return std::u16string(msg::kFileNotFound);
    case ERROR_PATH_NOT_FOUND: return std::u16string(msg::kPathNotFound);
    case ERROR_ACCESS_DENIED: return std::u16string(msg::kAccessDenied);
    default: break;
  }
  wchar_t* buffer = nullptr;
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                                          FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_ARGUMENT_ARRAY,
                                      nullptr, error, 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
  std::u16string text;
  if (buffer) {
    text.assign(reinterpret_cast<const char16_t*>(buffer), length);
    LocalFree(buffer);
  }
  while (!text.empty() && (text.back() <= u' ' || text.back() == u'.')) text.pop_back();
  return text;
}

[[noreturn]] void Raise(std::u16string_view pattern, std::u16string_view path, DWORD error) {
  throw EFileError(Format(pattern, {path, Reason(error)}));
}

HANDLE AsHandle(intptr_t h) { return reinterpret_cast<HANDLE>(h); }

constexpr DWORD kMaxIo = 1u << 30;

}  // namespace

FileReader::FileReader(std::u16string_view path) : path_(path) {
  HANDLE h = CreateFileW(NativePath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
  if (h == INVALID_HANDLE_VALUE) Raise(msg::kCannotOpenFile, path, GetLastError());
  LARGE_INTEGER size{};
  if (!GetFileSizeEx(h, &size)) {
    const DWORD error = GetLastError();
    CloseHandle(h);
    Raise(msg::kCannotOpenFile, path, error);
  }
  handle_ = reinterpret_cast<intptr_t>(h);
  size_ = static_cast<uint64_t>(size.QuadPart);
}

FileReader::~FileReader() {
  if (handle_ != -1) CloseHandle(AsHandle(handle_));
}

size_t FileReader::Read(void* buffer, size_t count) {
  size_t done = 0;
  auto* out = static_cast<char*>(buffer);
  while (done < count) {
    const DWORD want = count - done < kMaxIo ? static_cast<DWORD>(count - done) : kMaxIo;
    DWORD got = 0;
    if (!ReadFile(AsHandle(handle_), out + done, want, &got, nullptr)) {
      Raise(msg::kCannotOpenFile, path_, GetLastError());
    }
    if (got == 0) break;
    done += got;
  }
  return done;
}

// The path of the file an existing path leads to, its links followed; the
// path itself when there is no such file yet.
std::u16string FinalPath(std::u16string_view path) {
  const DWORD attributes = GetFileAttributesW(NativePath(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
    return std::u16string(path);
  }
  HANDLE h = CreateFileW(NativePath(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                         OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (h == INVALID_HANDLE_VALUE) return std::u16string(path);
  std::wstring final(MAX_PATH, L'\0');
  DWORD n = GetFinalPathNameByHandleW(h, final.data(), static_cast<DWORD>(final.size()), FILE_NAME_NORMALIZED);
  if (n >= final.size()) {
    final.resize(n);
    n = GetFinalPathNameByHandleW(h, final.data(), static_cast<DWORD>(final.size()), FILE_NAME_NORMALIZED);
  }
  CloseHandle(h);
  if (n == 0 || n >= final.size()) return std::u16string(path);
  return std::u16string(final.begin(), final.begin() + n);
}

FileWriter::FileWriter(std::u16string_view path) : path_(path), target_(FinalPath(path)) {
  HANDLE h = CreateFileW(NativePath(PartialName(target_)).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
  if (h == INVALID_HANDLE_VALUE) Raise(msg::kCannotCreateFile, path, GetLastError());
  handle_ = reinterpret_cast<intptr_t>(h);
}

FileWriter::~FileWriter() {
  if (handle_ == -1) return;
  CloseHandle(AsHandle(handle_));
  DeleteFileW(NativePath(PartialName(target_)).c_str());  // abandoned: the earlier file stays
}

void FileWriter::Write(const void* data, size_t count) {
  const auto* in = static_cast<const char*>(data);
  while (count > 0) {
    const DWORD want = count < kMaxIo ? static_cast<DWORD>(count) : kMaxIo;
    DWORD put = 0;
    if (!WriteFile(AsHandle(handle_), in, want, &put, nullptr)) Raise(msg::kCannotCreateFile, path_, GetLastError());
    in += put;
    count -= put;
  }
}

void FileWriter::Close() {
  if (handle_ == -1) return;
  HANDLE h = AsHandle(handle_);
  handle_ = -1;
  const std::wstring partial = NativePath(PartialName(target_));
  const std::wstring target = NativePath(target_);
  bool placed = CloseHandle(h);
  if (placed) {
    // ReplaceFileW keeps the replaced file's attributes and security; a file
    // not there is simply moved into place, and a folder is left for
    // MoveFileExW to refuse.
    const DWORD attributes = GetFileAttributesW(target.c_str());
    const bool exists = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    placed = exists &&
             ReplaceFileW(target.c_str(), partial.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr);
    // Where ReplaceFileW refuses (the file went meanwhile, a file system or
    // a Wine version without its support), both files are as they were:
    // the plain move still puts the data in place.
    if (!placed) {
      placed = MoveFileExW(partial.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
    }
  }
  if (!placed) {
    const DWORD error = GetLastError();
    DeleteFileW(partial.c_str());
    Raise(msg::kCannotCreateFile, path_, error);
  }
}

bool DirectoryExists(std::u16string_view path) {
  const DWORD attributes = GetFileAttributesW(NativePath(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool CreateOneFolder(std::u16string_view path) { return CreateDirectoryW(NativePath(path).c_str(), nullptr) != 0; }

}  // namespace qm
