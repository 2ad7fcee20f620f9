// Native build: POSIX file calls on UTF-8 paths. The reasons of the common
// failures are worded as Windows words them, so messages match across builds.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "core/errors.h"
#include "core/messages.h"
#include "core/utf.h"
#include "platform/file_system.h"

namespace qm {

namespace {

// "\" separates folders here too, as on Windows, so that the same task and
// the same path helpers work in both builds.
std::string NativePath(std::u16string_view path) {
  std::string native = Utf16ToUtf8(path);
  for (char& c : native) {
    if (c == '\\') c = '/';
  }
  return native;
}

bool ParentExists(const std::string& path) {
  const size_t slash = path.find_last_of('/');
  if (slash == std::string::npos) return true;  // relative to the current folder
  const std::string parent = slash == 0 ? std::string("/") : path.substr(0, slash);
  struct stat st {};
  return ::stat(parent.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

std::u16string Reason(int error, const std::string& path) {
  switch (error) {
    case ENOENT: return std::u16string(ParentExists(path) ? msg::kFileNotFound : msg::kPathNotFound);
    case ENOTDIR: return std::u16string(msg::kPathNotFound);
    case EACCES:
    case EPERM:
    case EISDIR: return std::u16string(msg::kAccessDenied);
    default: return Utf8ToUtf16(std::strerror(error));
  }
}

[[noreturn]] void Raise(std::u16string_view pattern, std::u16string_view path, int error, const std::string& native) {
  throw EFileError(Format(pattern, {path, Reason(error, native)}));
}

}  // namespace

FileReader::FileReader(std::u16string_view path) : path_(path) {
  const std::string native = NativePath(path);
  const int fd = ::open(native.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) Raise(msg::kCannotOpenFile, path, errno, native);
  struct stat st {};
  if (::fstat(fd, &st) != 0) {
    const int error = errno;
    ::close(fd);
    Raise(msg::kCannotOpenFile, path, error, native);
  }
  if (S_ISDIR(st.st_mode)) {
    ::close(fd);
    Raise(msg::kCannotOpenFile, path, EISDIR, native);
  }
  handle_ = fd;
  size_ = static_cast<uint64_t>(st.st_size);
}

FileReader::~FileReader() {
  if (handle_ >= 0) ::close(static_cast<int>(handle_));
}

size_t FileReader::Read(void* buffer, size_t count) {
  size_t done = 0;
  auto* out = static_cast<char*>(buffer);
  while (done < count) {
    const ssize_t n = ::read(static_cast<int>(handle_), out + done, count - done);
    if (n == 0) break;
    if (n < 0) {
      if (errno == EINTR) continue;
      Raise(msg::kCannotOpenFile, path_, errno, NativePath(path_));
    }
    done += static_cast<size_t>(n);
  }
  return done;
}

// The path with its symbolic links followed, as far as they lead (a link to
// a file not there yet ends at that file's path).
static std::string FinalPath(std::string path) {
  for (int hops = 0; hops < 40; ++hops) {
    struct stat st {};
    if (::lstat(path.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) break;
    std::string link(static_cast<size_t>(st.st_size > 0 ? st.st_size : 255) + 1, '\0');
    const ssize_t n = ::readlink(path.c_str(), link.data(), link.size());
    if (n < 0 || static_cast<size_t>(n) >= link.size()) break;
    link.resize(static_cast<size_t>(n));
    const size_t slash = path.find_last_of('/');
    path = link.front() == '/' || slash == std::string::npos ? link : path.substr(0, slash + 1) + link;
  }
  return path;
}

FileWriter::FileWriter(std::u16string_view path) : path_(path) {
  const std::string native = NativePath(path);
  target_ = Utf8ToUtf16(FinalPath(native));
  const int fd = ::open(NativePath(PartialName(target_)).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (fd < 0) Raise(msg::kCannotCreateFile, path, errno, native);
  handle_ = fd;
}

FileWriter::~FileWriter() {
  if (handle_ < 0) return;
  ::close(static_cast<int>(handle_));
  ::unlink(NativePath(PartialName(target_)).c_str());  // abandoned: the earlier file stays
}

void FileWriter::Write(const void* data, size_t count) {
  const auto* in = static_cast<const char*>(data);
  while (count > 0) {
    const ssize_t n = ::write(static_cast<int>(handle_), in, count);
    if (n < 0) {
      if (errno == EINTR) continue;
      Raise(msg::kCannotCreateFile, path_, errno, NativePath(path_));
    }
    in += n;
    count -= static_cast<size_t>(n);
  }
}

void FileWriter::Close() {
  if (handle_ < 0) return;
  const int fd = static_cast<int>(handle_);
  handle_ = -1;
  const std::string native = NativePath(path_);
  const std::string target = NativePath(target_);
  const std::string partial = NativePath(PartialName(target_));
  // The new file takes the permissions of the one it replaces.
  struct stat old {};
  if (::stat(target.c_str(), &old) == 0 && S_ISREG(old.st_mode)) ::fchmod(fd, old.st_mode & 07777);
  if (::close(fd) != 0 || ::rename(partial.c_str(), target.c_str()) != 0) {
    const int error = errno;
    ::unlink(partial.c_str());
    Raise(msg::kCannotCreateFile, path_, error, native);
  }
}

bool DirectoryExists(std::u16string_view path) {
  struct stat st {};
  return ::stat(NativePath(path).c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

bool CreateOneFolder(std::u16string_view path) { return ::mkdir(NativePath(path).c_str(), 0777) == 0; }

}  // namespace qm
