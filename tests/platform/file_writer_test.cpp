#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "platform/file_system.h"
#include "temp_folder.h"

namespace qm {
namespace {

namespace fs = std::filesystem;

using testing::Wide;

std::string Content(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

// Saving over a file changes its content only: a link stays a link to the
// file it named, which gets the new content, and a file keeps its mode.
TEST(FileWriter, ReplacesTheFileALinkNamesAndKeepsItsMode) {
  const qm::testing::TempFolder folder;
  const fs::path& dir = folder.Path();
  fs::create_directories(dir / "real");
  const fs::path file = dir / "real" / "data.csv";
  std::ofstream(file) << "old";
  [[maybe_unused]] const auto mode = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
#ifndef _WIN32
  fs::permissions(file, mode);
#endif
  std::error_code linkError;
  fs::create_symlink(fs::path("real") / "data.csv", dir / "link.csv", linkError);
  fs::create_directories(dir / "links");
  if (!linkError) fs::create_symlink(fs::path("..") / "link.csv", dir / "links" / "chain.csv", linkError);

  WriteFileBytes(Wide(file), "direct");
  EXPECT_EQ(Content(file), "direct");
#ifndef _WIN32
  EXPECT_EQ(fs::status(file).permissions(), mode);
#endif
  if (!linkError) {
    WriteFileBytes(Wide(dir / "links" / "chain.csv"), "through two links");
    EXPECT_TRUE(fs::is_symlink(dir / "links" / "chain.csv"));
    EXPECT_TRUE(fs::is_symlink(dir / "link.csv"));
    EXPECT_EQ(Content(file), "through two links");
#ifndef _WIN32
    EXPECT_EQ(fs::status(file).permissions(), mode);
#endif
    EXPECT_FALSE(fs::exists(dir / "links" / "chain.csv.qmcsv-part"));
  }
}

}  // namespace
}  // namespace qm
