// Files qmhost reads for itself (task files, block files, show-file, the
// start of a file to inspect): the bytes, or the reason in words why not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace qmhost {

// Reads at most `limit` bytes from the start of the file at the UTF-8 path.
// False with `reason` set ("no such file", "is a folder, not a file",
// "permission denied", ...) when it cannot; never throws.
bool ReadFileBytes(const std::string& path, std::string& bytes, std::string& reason, size_t limit = SIZE_MAX);
// Empty when `path` names a file that can be opened for reading; otherwise
// the reason, as ReadFileBytes gives it.
std::string FileProblem(const std::string& path);

}  // namespace qmhost
