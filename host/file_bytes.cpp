#include "file_bytes.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>

#include "console.h"

namespace qmhost {

namespace {

// The file opened for reading, or the reason it cannot be. The common
// reasons are our own words, the same in every build; others are the C
// library's text for errno.
std::string Open(const std::string& path, std::ifstream& in) {
  std::error_code ec;
  const std::filesystem::path name = PathOf(path);
  const std::filesystem::file_status status = std::filesystem::status(name, ec);
  if (status.type() == std::filesystem::file_type::not_found) return "no such file";
  if (status.type() == std::filesystem::file_type::directory) return "is a folder, not a file";
  errno = 0;
  in.open(name, std::ios::binary);
  if (in) return {};
  if (errno == EACCES || errno == EPERM) return "permission denied";
  if (errno == ENOENT) return "no such file";
  return errno != 0 ? std::string(std::strerror(errno)) : "cannot be opened";
}

}  // namespace

bool ReadFileBytes(const std::string& path, std::string& bytes, std::string& reason, size_t limit) {
  bytes.clear();
  try {
    std::ifstream in;
    reason = Open(path, in);
    if (!reason.empty()) return false;
    char chunk[65536];
    while (bytes.size() < limit && in) {
      in.read(chunk, static_cast<std::streamsize>(std::min(sizeof chunk, limit - bytes.size())));
      bytes.append(chunk, static_cast<size_t>(in.gcount()));
    }
    if (in.bad()) reason = "a read error";
  } catch (const std::exception&) {
    // The stream library reports some read errors (a device, a folder on
    // some systems) by throwing.
    reason = "a read error";
  }
  return reason.empty();
}

std::string FileProblem(const std::string& path) {
  try {
    std::ifstream in;
    return Open(path, in);
  } catch (const std::exception&) {
    return "cannot be opened";
  }
}

}  // namespace qmhost
