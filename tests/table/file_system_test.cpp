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
  const Case cases[] = {{u"C:\\data\\file.csv", u"C:\\data"}, {u"C:\\file.csv", u"C:\\"},
                        {u"C:file.csv", u"C:"},                {u"file.csv", u""},
                        {u"", u""},                            {u"\\file.csv", u"\\"},
                        {u"/tmp/x/file.csv", u"/tmp/x"},       {u"/file.csv", u"/"},
                        {u"a/b\\c", u"a/b"},                   {u"dir\\\\file", u"dir\\\\"},
                        {u"dir\\", u"dir"}};
  for (const Case& c : cases) {
    EXPECT_EQ(ExtractFileDir(c.path), c.folder) << std::string(c.path.begin(), c.path.end());
  }
}

TEST(PathHelpers, TrailingDelimitersAndRemoveChar) {
  struct Case {
    std::u16string in, added, removed;
  };
  const Case cases[] = {{u"", u"", u""},
                        {u"C", u"C:\\", u"C"},
                        {u"\\", u"\\", u"\\"},
                        {u"C:\\", u"C:\\", u"C:\\"},
                        {u"C:", u"C:\\", u"C:"},
                        {u"C:\\dir\\", u"C:\\dir\\", u"C:\\dir"},
                        {u"C:\\dir", u"C:\\dir\\", u"C:\\dir"},
                        {u"/tmp/", u"/tmp/\\", u"/tmp"},
                        {u"C:/", u"C:/\\", u"C:"},
                        {u"dir\\\\", u"dir\\\\", u"dir\\"}};
  for (const Case& c : cases) {
    const std::string name(c.in.begin(), c.in.end());
    EXPECT_EQ(AddTrailingDelimiter(c.in), c.added) << name;
    EXPECT_EQ(RemoveTrailingDelimiter(c.in), c.removed) << name;
  }
  EXPECT_EQ(RemoveChar(u"a\"b\"\"c", u'"'), u"abc");
  EXPECT_EQ(RemoveChar(u"", u'x'), u"");
  EXPECT_EQ(RemoveChar(u"xxx", u'x'), u"");
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
  const std::u16string missing = Wide(folder / "missing.csv");
  const std::u16string noFolder = Wide(folder / "none" / "x.csv");
  const std::u16string isFolder = Wide(folder.Path());
  struct Case {
    const char* name;
    std::function<void()> action;
    std::u16string message;
  };
  const Case cases[] = {
      {"missing file", [&] { ReadFileBytes(missing); },
       u"Cannot open file \"" + missing + u"\". The system cannot find the file specified"},
      {"missing folder", [&] { ReadFileBytes(noFolder); },
       u"Cannot open file \"" + noFolder + u"\". The system cannot find the path specified"},
      {"folder as file", [&] { ReadFileBytes(isFolder); },
       u"Cannot open file \"" + isFolder + u"\". Access is denied"},
      {"write into missing folder", [&] { WriteFileBytes(noFolder, "x"); },
       u"Cannot create file \"" + noFolder + u"\". The system cannot find the path specified"},
      {"write onto folder", [&] { WriteFileBytes(isFolder, "x"); },
       u"Cannot create file \"" + isFolder + u"\". Access is denied"},
      {"write lines into missing folder", [&] { WriteLinesToFile(noFolder, {u"a"}, TextEncoding::UTF8); },
       u"Cannot create file \"" + noFolder + u"\". The system cannot find the path specified"},
  };
  for (const Case& c : cases) EXPECT_EQ(FileErrorText(c.action), c.message) << c.name;
}

TEST(FileSystem, WriteLinesPutsTheMarkAndLineBreaks) {
  struct Case {
    TextEncoding encoding;
    std::string bytes;
  };
  const Case cases[] = {{TextEncoding::UTF8, "\xEF\xBB\xBF" "a;\xC3\xA9\r\n\r\n"},
                        {TextEncoding::Unicode, std::string("\xFF\xFE" "a\0;\0\xE9\0\r\0\n\0\r\0\n\0", 16)},
                        {TextEncoding::Default, "a;\xE9\r\n\r\n"},
                        {TextEncoding::ANSI, "a;\xE9\r\n\r\n"},
                        {TextEncoding::ASCII, "a;?\r\n\r\n"},
                        {TextEncoding::UTF7, "a+ADsA6Q-\r\n\r\n"}};
  TempFolder folder;
  for (const Case& c : cases) {
    const auto path = folder / "lines.csv";
    WriteBytes(path, "previous content that is longer");
    WriteLinesToFile(Wide(path), {u"a;\u00e9", u""}, c.encoding);
    EXPECT_EQ(ReadBytes(path), c.bytes) << static_cast<int>(c.encoding);
  }
  WriteLinesToFile(Wide(folder / "none.csv"), {}, TextEncoding::UTF8);
  EXPECT_EQ(ReadBytes(folder / "none.csv"), "\xEF\xBB\xBF");
}

}  // namespace
}  // namespace qm
