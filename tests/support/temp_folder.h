// A fresh folder under the system's temporary folder, removed with its
// contents when the test ends.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "core/utf.h"

namespace qm::testing {

class TempFolder {
 public:
  // A random name, taken only once the folder is made: programs running at
  // the same time (CTest runs several) never share one.
  TempFolder() {
    std::random_device random;
    for (;;) {
      // The clock too, should a runtime's random_device be a fixed sequence.
      const uint64_t tag = ((uint64_t{random()} << 32) ^ random()) +
                           static_cast<uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
      path_ = std::filesystem::temp_directory_path() / ("qmcsv_test_" + std::to_string(tag));
      if (std::filesystem::create_directory(path_)) break;
    }
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::filesystem::path& Path() const { return path_; }
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

inline std::u16string Wide(const std::filesystem::path& path) {
  const std::u8string utf8 = path.u8string();
  return Utf8ToUtf16(std::string_view(reinterpret_cast<const char*>(utf8.data()), utf8.size()));
}

inline void WriteBytes(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::string ReadBytes(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace qm::testing
