// The file seam and the path helpers.
#include <gtest/gtest.h>

#include <string>

#include "core/errors.h"
#include "platform/file_system.h"
#include "table/simple_csv_object.h"
#include "temp_folder.h"

namespace qm {
namespace {

using testing::ReadBytes;
using testing::TempFolder;
using testing::Wide;
using testing::WriteBytes;

TEST(PathHelpers, ExtractFileDir) {
  struct Case {
    std::u16string path, folder;
  };
  const Case cases[] = {{u"C:\\file.csv", u"C:\\"}, {u"C:file.csv", u"C:"}, {u"file.csv", u""},
                        {u"/file.csv", u"/"},       {u"a/b\\c", u"a/b"},    {u"dir\\\\file", u"dir\\\\"}};
  for (const Case& c : cases) {
    EXPECT_EQ(ExtractFileDir(c.path), c.folder) << std::string(c.path.begin(), c.path.end());
  }
}

TEST(PathHelpers, TrailingDelimitersAndRemoveChar) {
  struct Case {
    std::u16string in, added, removed;
  };
  const Case cases[] = {{u"", u"", u""},
                        {u"C:\\", u"C:\\", u"C:\\"},
                        {u"C:\\dir", u"C:\\dir\\", u"C:\\dir"},
                        {u"/tmp/", u"/tmp/\\", u"/tmp"},
                        {u"dir\\\\", u"dir\\\\", u"dir\\"}};
  for (const Case& c : cases) {
    const std::string name(c.in.begin(), c.in.end());
    EXPECT_EQ(AddTrailingDelimiter(c.in), c.added) << name;
    EXPECT_EQ(RemoveTrailingDelimiter(c.in), c.removed) << name;
  }
  EXPECT_EQ(RemoveChar(u"a\"b\"\"c", u'"'), u"abc");
}

TEST(FileSystem, ForceFolders) {
  TempFolder folder;
  EXPECT_TRUE(ForceFolders(u""));
  EXPECT_TRUE(ForceFolders(u"Q:"));
  const auto deep = folder / "a" / "b" / "c";
  EXPECT_TRUE(ForceFolders(Wide(deep)));
  EXPECT_TRUE(DirectoryExists(Wide(deep)));
  EXPECT_TRUE(ForceFolders(Wide(deep)));  // already there
  EXPECT_TRUE(ForceFolders(Wide(folder / "d") + u"\\e\\"));
  EXPECT_TRUE(DirectoryExists(Wide(folder / "d" / "e")));
  WriteBytes(folder / "file", "x");
  EXPECT_FALSE(ForceFolders(Wide(folder / "file" / "sub")));
}

TEST(FileSystem, ReadsAndWritesBytes) {
  TempFolder folder;
  const auto path = folder / "\xC3\xA4pfel \xE4\xB8\xAD.bin";
  std::string bytes;
  for (int k = 0; k < 300000; ++k) bytes.push_back(static_cast<char>(k * 7));
  WriteFileBytes(Wide(path), bytes);
  EXPECT_EQ(ReadBytes(path), bytes);
  EXPECT_EQ(ReadFileBytes(Wide(path)), bytes);
  WriteFileBytes(Wide(path), "short");
  EXPECT_EQ(ReadFileBytes(Wide(path)), "short");

  FileReader reader(Wide(path));
  EXPECT_EQ(reader.Size(), 5u);
  char buffer[8];
  EXPECT_EQ(reader.Read(buffer, 3), 3u);
  EXPECT_EQ(reader.Read(buffer, 8), 2u);
  EXPECT_EQ(reader.Read(buffer, 8), 0u);
}

TEST(FileSystem, AFileIsReplacedOnlyByACompleteWrite) {
  TempFolder folder;
  const auto path = folder / "orders.csv";
  WriteFileBytes(Wide(path), "old content");
  {
    FileWriter abandoned(Wide(path));  // as when rendering fails half way
    abandoned.Write("new", 3);
  }
  EXPECT_EQ(ReadFileBytes(Wide(path)), "old content");
  FileWriter writer(Wide(path));
  writer.Write("new", 3);
  EXPECT_EQ(ReadFileBytes(Wide(path)), "old content");  // not yet in place
  writer.Close();
  EXPECT_EQ(ReadFileBytes(Wide(path)), "new");
  EXPECT_FALSE(std::filesystem::exists(folder / "orders.csv.qmcsv-part"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

std::u16string FileErrorText(const std::function<void()>& action) {
  try {
    action();
  } catch (const EFileError& e) {
    return e.Message();
  }
  return u"no error";
}

TEST(FileSystem, ErrorsNameTheFileAndTheReason) {
  TempFolder folder;
  const std::u16string noFolder = Wide(folder / "none" / "x.csv");
  const std::u16string isFolder = Wide(folder.Path());
  struct Case {
    const char* name;
    std::function<void()> action;
    std::u16string message;
  };
  const Case cases[] = {
      {"folder as file", [&] { ReadFileBytes(isFolder); }, u"Cannot open file \"" + isFolder + u"\". Access is denied"},
      {"write into missing folder", [&] { WriteFileBytes(noFolder, "x"); },
       u"Cannot create file \"" + noFolder + u"\". The system cannot find the path specified"},
  };
  for (const Case& c : cases) EXPECT_EQ(FileErrorText(c.action), c.message) << c.name;
}

}  // namespace
}  // namespace qm
