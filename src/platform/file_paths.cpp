// Path text helpers, the same in both builds: "\" and "/" both separate
// folders and ":" ends a drive.
#include "platform/file_system.h"

namespace qm {

namespace {

constexpr bool IsSeparator(char16_t c) { return c == u'\\' || c == u'/'; }
constexpr bool IsLetter(char16_t c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }

}  // namespace

std::u16string ExtractFileDir(std::u16string_view path) {
  size_t i = path.size();
  while (i > 0 && !IsSeparator(path[i - 1]) && path[i - 1] != u':') --i;
  // i is now one past the last separator or drive colon (0: none).
  if (i > 1 && IsSeparator(path[i - 1]) && !IsSeparator(path[i - 2]) && path[i - 2] != u':') --i;
  return std::u16string(path.substr(0, i));
}

std::u16string AddTrailingDelimiter(std::u16string_view path) {
  std::u16string result(path);
  if (path.empty() || path.back() == u'\\') return result;
  if (path.size() == 1 && IsLetter(path[0])) return result + u":\\";
  return result + u"\\";
}

std::u16string RemoveTrailingDelimiter(std::u16string_view path) {
  if (path.size() < 2 || !IsSeparator(path.back())) return std::u16string(path);
  if (path.size() == 3 && IsLetter(path[0]) && path[1] == u':' && path[2] == u'\\') return std::u16string(path);
  return std::u16string(path.substr(0, path.size() - 1));
}

std::u16string RemoveChar(std::u16string_view text, char16_t ch) {
  std::u16string result;
  result.reserve(text.size());
  for (char16_t c : text) {
    if (c != ch) result.push_back(c);
  }
  return result;
}

bool ForceFolders(std::u16string_view path) {
  if (path.empty()) return true;
  if (path.size() == 2 && IsLetter(path[0]) && path[1] == u':') return true;
  std::u16string folder = path.size() > 1 && IsSeparator(path.back()) ? std::u16string(path.substr(0, path.size() - 1))
                                                                      : std::u16string(path);
  if (folder.empty() || DirectoryExists(folder)) return true;
  const std::u16string parent = ExtractFileDir(folder);
  if (!parent.empty() && parent.size() < folder.size() && !ForceFolders(parent)) return false;
  return CreateOneFolder(folder) || DirectoryExists(folder);
}

std::string ReadFileBytes(std::u16string_view path) {
  FileReader reader(path);
  std::string bytes;
  bytes.resize(static_cast<size_t>(reader.Size()));
  size_t have = reader.Read(bytes.data(), bytes.size());
  bytes.resize(have);
  // A file that grew since it was opened is read to its end.
  char more[65536];
  for (size_t n; (n = reader.Read(more, sizeof more)) > 0;) bytes.append(more, n);
  return bytes;
}

void WriteFileBytes(std::u16string_view path, std::string_view bytes) {
  FileWriter writer(path);
  writer.Write(bytes.data(), bytes.size());
  writer.Close();
}

}  // namespace qm
