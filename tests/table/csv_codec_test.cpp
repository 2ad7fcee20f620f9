// Reading CSV text into a table and writing it back, with the settings, the
// skip rules, the guarded operations and files in every encoding.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "core/messages.h"
#include "core/utf.h"
#include "table/simple_csv_object.h"
#include "temp_folder.h"

namespace qm {
namespace {

using Cells = std::vector<std::u16string>;
using testing::ReadBytes;
using testing::TempFolder;
using testing::Wide;
using testing::WriteBytes;

std::vector<Cells> Rows(TSimpleCSVDataClass& table) {
  std::vector<Cells> rows;
  for (int32_t r = 0; r < table.RecordCount(); ++r) {
    Cells cells;
    const Record* record = table.GetRow(r);
    for (int32_t k = 0; k < record->Count(); ++k) cells.emplace_back(record->Cell(k));
    rows.push_back(cells);
  }
  return rows;
}

Cells Fields(const TSimpleCSVDataClass& table) { return table.Storage().FieldNames(); }

TEST(CsvReader, FailuresLeaveTheTableEmptyAndKeepTheMessage) {
  struct Case {
    const char* name;
    std::u16string text;
    std::function<void(TSimpleCSVDataClass&)> configure;
    std::u16string error;
  };
  const Case cases[] = {
      {"all skipped", u"\n  \n#x\n",
       [](TSimpleCSVDataClass& t) {
         t.SetSkipEmpty(true);
         t.SetSkipComments(true);
         t.SetCommentChars(u"#");
       },
       u"Text is empty or contains no data"},
      {"skip first beyond", u"a\nb", [](TSimpleCSVDataClass& t) { t.SetSkipFirst(2); },
       u"Text is empty or contains no data"},
      {"negative skip first", u"a\nb", [](TSimpleCSVDataClass& t) { t.SetSkipFirst(-1); },
       u"List index out of bounds (-1)"},
  };
  for (const Case& c : cases) {
    TSimpleCSVDataClass table;
    ASSERT_TRUE(table.LoadFromText(u"x;y\n1;2"));
    c.configure(table);
    EXPECT_FALSE(table.LoadFromText(c.text)) << c.name;
    EXPECT_EQ(table.LastError(), c.error) << c.name;
    EXPECT_EQ(table.FieldCount(), 0) << c.name;
    EXPECT_EQ(table.RecordCount(), 0) << c.name;
  }
  TSimpleCSVDataClass table;  // a later success does not clear the message
  EXPECT_FALSE(table.LoadFromText(u""));
  EXPECT_TRUE(table.LoadFromText(u"a"));
  EXPECT_EQ(table.LastError(), u"Text is empty or contains no data");
}

// ---- files ------------------------------------------------------------------

TEST(CsvFiles, ReadsEachEncodingAndWritesTheSameBytesBack) {
  struct Case {
    const char* name;
    TextEncoding encoding;
    std::string bytes;
    std::vector<Cells> rows;
    char16_t delimiter = u';';
  };
  const Case cases[] = {
      {"utf8",
       TextEncoding::UTF8,
       "\xEF\xBB\xBFk;v\r\n\xC3\x84pfel;\xF0\x9F\x98\x80\r\n",
       {{u"k", u"v"}, {u"\u00c4pfel", u"\U0001F600"}}},
      {"unicode",
       TextEncoding::Unicode,
       std::string("\xFF\xFEk\0;\0\xc4\0\r\0\n\0=\xD8\0\xDE;\0\r\0\n\0", 22),
       {{u"k", u"\u00c4"}, {u"\U0001F600", u""}}},
      {"unicode lone surrogate",
       TextEncoding::Unicode,
       std::string("\xFF\xFE"
                   "a\0\x01\xD8\r\0\n\0",
                   10),
       {{std::u16string(u"a\xD801", 2)}}},
      {"ansi",
       TextEncoding::ANSI,
       "k;\x80\x81\x8D\x8F\x90\x9D\xFF\r\n\xC4;\x9F\r\n",
       {{u"k", u"\u20ac\u0081\u008d\u008f\u0090\u009d\u00ff"}, {u"\u00c4", u"\u0178"}}},
      {"default", TextEncoding::Default, "a;\xE9\r\n", {{u"a", u"\u00e9"}}},
      {"ascii", TextEncoding::ASCII, "a;b~\r\n", {{u"a", u"b~"}}},
      {"utf7", TextEncoding::UTF7, "A+AMQ-,+2D3eAA-,1+-1\r\n", {{u"A\u00c4", u"\U0001F600", u"1+1"}}, u','},
  };
  TempFolder folder;
  for (const Case& c : cases) {
    const auto input = folder / (std::string(c.name) + ".csv");
    const auto output = folder / (std::string(c.name) + "-out.csv");
    WriteBytes(input, c.bytes);
    TSimpleCSVDataClass table;
    table.SetEncoding(c.encoding);
    table.SetDelimiter(c.delimiter);
    ASSERT_TRUE(table.LoadFromCSVFile(Wide(input))) << c.name << ": " << Utf16ToUtf8(table.LastError());
    EXPECT_EQ(Rows(table), c.rows) << c.name;
    ASSERT_TRUE(table.SaveToCSVFile(Wide(output))) << c.name;
    EXPECT_EQ(ReadBytes(output), c.bytes) << c.name;

    std::vector<std::u16string> lines;
    table.SaveToStrings(lines);
    WriteLinesToFile(Wide(output), lines, c.encoding);
    EXPECT_EQ(ReadBytes(output), c.bytes) << c.name;
  }
}

TEST(CsvFiles, ByteOrderMarkOnlySkippedForItsOwnEncoding) {
  TempFolder folder;
  const auto path = folder / "bom.csv";
  WriteBytes(path, "\xEF\xBB\xBFx;y\r\n");
  TSimpleCSVDataClass table;
  table.SetEncoding(TextEncoding::ANSI);
  ASSERT_TRUE(table.LoadFromCSVFile(Wide(path)));
  EXPECT_EQ(Rows(table), (std::vector<Cells>{{u"\u00ef\u00bb\u00bfx", u"y"}}));
  table.SetEncoding(TextEncoding::Unicode);
  WriteBytes(path, std::string("\xFE\xFFx\0", 4));  // big-endian mark is text
  ASSERT_TRUE(table.LoadFromCSVFile(Wide(path)));
  EXPECT_EQ(Rows(table), (std::vector<Cells>{{u"\ufffex"}}));
}

// UTF-8 in a strict format is split straight from the bytes; any bytes, with
// every skip rule, must load as decoding the whole text first would.
TEST(CsvFiles, DirectUtf8ReadingMatchesDecodedText) {
  struct Setting {
    const char* name;
    std::function<void(TSimpleCSVDataClass&)> configure;
  };
  const Setting settings[] = {
      {"defaults", [](TSimpleCSVDataClass&) {}},
      {"comma, single quote, header",
       [](TSimpleCSVDataClass& t) {
         t.SetDelimiter(u',');
         t.SetQuoteChar(u'\'');
         t.SetHeaderLine(true);
       }},
      {"no quote, skips",
       [](TSimpleCSVDataClass& t) {
         t.SetQuoteChar(0);
         t.SetSkipEmpty(true);
         t.SetSkipComments(true);
         t.SetCommentChars(u"\u00e9;");
         t.SetSkipFirst(3);
       }},
      {"quote is delimiter",
       [](TSimpleCSVDataClass& t) {
         t.SetDelimiter(u'"');
         t.SetSkipComments(true);
         t.SetCommentChars(u"\"");
       }},
  };
  const std::string pieces[] = {";",
                                ";",
                                "\"",
                                "\"\"",
                                ",",
                                "'",
                                "\r\n",
                                "\n",
                                "\r",
                                " ",
                                "\t",
                                "abc",
                                "\xC3\xA9",
                                "\xE4\xB8\xAD",
                                "\xF0\x9F\x98\x80",
                                "\xC3",
                                "\xE2\x82",
                                "\x80",
                                "\xFF",
                                "\xED\xA0\x80",
                                "0123456789abcdefghij",
                                std::string(70, 'x')};
  std::mt19937 random(2024);
  TempFolder folder;
  for (int round = 0; round < 12; ++round) {
    std::string bytes;
    const size_t target = round < 10 ? 2000 + random() % 3000 : 700000;  // the last ones span pieces
    while (bytes.size() < target) bytes += pieces[random() % std::size(pieces)];
    if (round == 3) bytes.insert(bytes.size() / 2, 1, '\0');
    if (round == 4) bytes += "\r";
    const auto path = folder / "direct.csv";
    WriteBytes(path, bytes);
    for (const Setting& setting : settings) {
      TSimpleCSVDataClass fromFile, fromText;
      fromFile.SetEncoding(TextEncoding::UTF8);
      setting.configure(fromFile);
      setting.configure(fromText);
      const bool fileOk = fromFile.LoadFromCSVFile(Wide(path));
      const bool textOk = fromText.LoadFromText(DecodeBytes(bytes, TextEncoding::UTF8));
      ASSERT_EQ(fileOk, textOk) << setting.name << " round " << round;
      EXPECT_EQ(fromFile.LastError(), fromText.LastError());
      EXPECT_EQ(Fields(fromFile), Fields(fromText)) << setting.name << " round " << round;
      ASSERT_EQ(fromFile.RecordCount(), fromText.RecordCount()) << setting.name << " round " << round;
      EXPECT_TRUE(Rows(fromFile) == Rows(fromText)) << setting.name << " round " << round;
      // The split from bytes tells which records fit one byte a character.
      for (int32_t r = 0; r < fromFile.RecordCount(); ++r) {
        ASSERT_EQ(fromFile.GetRow(r)->IsNarrow(), fromText.GetRow(r)->IsNarrow()) << setting.name << " row " << r;
      }
    }
  }
}

// A file is written chunk by chunk, each line encoded on its own and a
// record kept one byte a character straight into the file's bytes; any table
// in any format must give the bytes of its whole text encoded at once.
TEST(CsvFiles, FileMatchesEncodedText) {
  const TextFormat formats[] = {{u';', u'"', true},           {u',', u'"', false}, {u'\t', u'\'', true},
                                {u'\u00a7', u'\u00ab', true}, {u';', 0, true},     {u'\xDC00', u'"', true}};
  const std::u16string alphabet =
      std::u16string(u"ab ;,\"'\t\u00a7\u00ab\u00e9\u00ff\r\u4e2d\U0001F600\xD800\xDC00", 18) +
      std::u16string(1, u'\0');
  const size_t oneByte = 13;  // the first thirteen characters lie below U+0100
  std::mt19937 random(31);
  TempFolder folder;
  for (int round = 0; round < 30; ++round) {
    TSimpleCSVDataClass table;
    table.SetHeaderLine(round % 2 == 0);
    for (int k = 0; k < 4; ++k) table.Storage().AppendFieldName(u"f" + std::u16string(1, alphabet[random() % 12]));
    // Rows all below U+0100 in most rounds, else mixed with wider ones.
    const size_t letters = round % 3 ? oneByte : alphabet.size();
    for (int r = 0; r < 200; ++r) {
      std::vector<std::u16string> cells(random() % 6);
      for (auto& cell : cells) {
        const size_t length = random() % 3 == 0 ? 0 : random() % 30;
        for (size_t i = 0; i < length; ++i) {
          cell.push_back(random() % 3 ? static_cast<char16_t>(u'a' + random() % 26) : alphabet[random() % letters]);
        }
      }
      std::vector<std::u16string_view> views(cells.begin(), cells.end());
      table.Storage().AppendRecord(Record(views));
    }
    for (const TextFormat& format : formats) {
      table.SetDelimiter(format.delimiter);
      table.SetQuoteChar(format.quote);
      table.SetStrictDelimiter(format.strict);
      std::u16string text;
      if (!table.SaveToText(text)) {  // a cell needs the quotes the format lacks
        EXPECT_ANY_THROW(table.WriteToFile(Wide(folder / "out.csv"), TextEncoding::UTF8));
        continue;
      }
      for (const TextEncoding encoding :
           {TextEncoding::UTF8, TextEncoding::ANSI, TextEncoding::ASCII, TextEncoding::Unicode, TextEncoding::UTF7}) {
        table.WriteToFile(Wide(folder / "out.csv"), encoding);
        EXPECT_TRUE(ReadBytes(folder / "out.csv") == std::string(ByteOrderMark(encoding)) + EncodeText(text, encoding))
            << round << " " << static_cast<int>(encoding);
      }
    }
  }
}

// Records of any size load whole, from a file and from text, into a new
// table and into one whose memory a smaller load left behind.
TEST(CsvReader, RecordsOfAnySizeLoadWhole) {
  std::mt19937 random(7);
  std::string noise(300000, '\0');
  for (char& c : noise) c = static_cast<char>(random());
  std::string cells10 = "abcdefghi;";  // 200 MB of cells of nine letters
  while (cells10.size() < 200000000) cells10 += cells10;
  cells10.resize(200000000);
  const struct {
    const char* name;
    std::string bytes;
    TextEncoding encoding;
    int32_t records;
    int32_t cells;  // of the last record
  } cases[] = {
      {"long first line", std::string(32765, 'x') + "\n1\n", TextEncoding::UTF8, 2, 1},
      {"10,000 columns",
       [] {
         std::string s;
         for (int r = 0; r < 3; ++r) s += std::string(9999, ';') + "\n";
         return s;
       }(),
       TextEncoding::UTF8, 3, 10000},
      {"100,000-character cell", "h\n" + std::string(100000, 'y') + "\n", TextEncoding::UTF8, 2, 1},
      {"random bytes as UTF-16", noise, TextEncoding::Unicode, -1, -1},
      {"1,000,000 columns", std::string(999999, ';'), TextEncoding::UTF8, 1, 1000000},
      {"100 MB cell", "a;" + std::string(100000000, 'z'), TextEncoding::UTF8, 1, 2},
      {"200 MB line", std::move(cells10), TextEncoding::UTF8, 1, 20000001},
  };
  TempFolder folder;
  const auto path = folder / "big.csv";
  const std::string small = [] {
    std::string s;
    for (int r = 0; r < 20000; ++r) s += "1;2;3\n";
    return s;
  }();
  for (const auto& c : cases) {
    WriteBytes(path, c.bytes);
    const bool large = c.bytes.size() > 50000000;
    for (int reload = large ? 1 : 0; reload < 2; ++reload) {
      TSimpleCSVDataClass table;
      table.SetEncoding(c.encoding);
      if (reload) {
        ASSERT_TRUE(table.LoadFromText(DecodeBytes(small, TextEncoding::UTF8)));
      }
      ASSERT_TRUE(table.LoadFromCSVFile(Wide(path))) << c.name;
      const int32_t records = table.RecordCount();
      const int32_t cells = records ? table.GetRow(records - 1)->Count() : 0;
      if (c.records >= 0) {
        EXPECT_EQ(records, c.records) << c.name;
        EXPECT_EQ(cells, c.cells) << c.name;
      }
      if (large) continue;  // the text path is the same reader, at twice the memory
      ASSERT_TRUE(table.LoadFromText(DecodeBytes(c.bytes, c.encoding))) << c.name;
      if (c.records >= 0) {
        EXPECT_EQ(table.RecordCount(), c.records) << c.name;
      }
    }
  }
}

#if defined(__linux__) && !defined(__SANITIZE_ADDRESS__)
// The process's peak memory in KiB; ResetPeak() starts it anew from the memory in use.
long PeakKb() {
  std::ifstream status("/proc/self/status");
  std::string key;
  long kb = 0;
  while (status >> key && key != "VmHWM:") status.ignore(1 << 12, '\n');
  status >> kb;
  return kb;
}
void ResetPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }
#endif

// A character 0 ends the text: a file of zeros is not read on for a line
// break, in any of the reader's paths (the peak memory shows how far it read).
TEST(CsvFiles, ACharacter0EndsTheReadingAtOnce) {
#if !defined(__linux__)
  GTEST_SKIP() << "peak memory is read from /proc";
#elif defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "AddressSanitizer's allocator changes the peak memory measured here";
#else
  auto peakKb = PeakKb;
  TempFolder folder;
  const auto path = folder / "zeros.csv";
  { std::ofstream(path, std::ios::binary) << "a;b\n"; }
  std::filesystem::resize_file(path, size_t{256} << 20);  // sparse: no disk
  const struct {
    TextEncoding encoding;
    bool strict;
  } cases[] = {{TextEncoding::UTF8, true},
               {TextEncoding::UTF8, false},
               {TextEncoding::Unicode, true},
               {TextEncoding::ANSI, true}};
  for (const auto& c : cases) {
    ResetPeak();
    const long before = peakKb();
    TSimpleCSVDataClass table;
    table.SetEncoding(c.encoding);
    table.SetStrictDelimiter(c.strict);
    table.LoadFromCSVFile(Wide(path));
    EXPECT_LT(peakKb() - before, 32 << 10) << static_cast<int>(c.encoding);
  }
#endif
}

// A file of one huge line, many short cells or one long cell, with or
// without a header, loads within three times its size, as ordinary files do.
TEST(CsvFiles, OneHugeLineLoadsWithinThreeTimesItsSize) {
#if !defined(__linux__)
  GTEST_SKIP() << "peak memory is read from /proc";
#elif defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "AddressSanitizer's allocator changes the peak memory measured here";
#else
  const struct {
    const char* piece;
    size_t repeat;
    bool header;
    int32_t fields;
  } cases[] = {{"abcdefghi;", 4'000'000, false, 4'000'001},
               {"abcdefghi;", 4'000'000, true, 4'000'001},
               {"x", 40'000'000, false, 1},
               {"x", 40'000'000, true, 1}};
  TempFolder folder;
  const auto path = folder / "line.csv";
  for (const auto& c : cases) {
    {
      std::ofstream out(path, std::ios::binary);
      const std::string piece = [&] {
        std::string text;
        for (int k = 0; k < 1000; ++k) text += c.piece;
        return text;
      }();
      for (size_t k = 0; k < c.repeat / 1000; ++k) out << piece;
    }
    const long fileKb = static_cast<long>(std::filesystem::file_size(path) >> 10);
    ResetPeak();
    const long before = PeakKb();
    TSimpleCSVDataClass table;
    table.SetEncoding(TextEncoding::UTF8);
    table.SetHeaderLine(c.header);
    ASSERT_TRUE(table.LoadFromCSVFile(Wide(path)));
    EXPECT_EQ(table.FieldCount(), c.fields);
    EXPECT_EQ(table.RecordCount(), c.header ? 0 : 1);
    EXPECT_LE(PeakKb() - before, 3 * fileKb) << c.piece << " header " << c.header;
  }
#endif
}

// A format whose text could not be read back as the same table fails the
// save and writes nothing; one that can is written, however odd.
TEST(CsvWriter, RefusesTextThatCannotBeReadBack) {
  const struct {
    TextFormat format;
    Cells row;
    bool saves;
  } cases[] = {
      {{0, u'"', true}, {u"a", u"b"}, false},     {{u'\n', u'"', true}, {u"a", u"b"}, false},
      {{u'\r', u'"', true}, {u"a", u"b"}, false}, {{u';', 0, true}, {u"a;b"}, false},
      {{u';', 0, false}, {u"a b"}, false},        {{u';', u'\r', true}, {u"a;b"}, false},
      {{u';', u'\n', true}, {u""}, false},        {{0, u'"', true}, {u"a"}, true},
      {{u';', 0, true}, {u"a b", u""}, true},     {{u';', u'\r', true}, {u"a b"}, true},
  };
  TempFolder folder;
  const auto path = folder / "out.csv";
  for (const auto& c : cases) {
    WriteBytes(path, "old");
    TSimpleCSVDataClass table;
    table.SetDelimiter(c.format.delimiter);
    table.SetQuoteChar(c.format.quote);
    table.SetStrictDelimiter(c.format.strict);
    std::vector<std::u16string_view> cells(c.row.begin(), c.row.end());
    table.Storage().AppendRecord(Record(cells));
    std::u16string text = u"old";
    EXPECT_EQ(table.SaveToText(text), c.saves) << Utf16ToUtf8(c.row[0]);
    EXPECT_EQ(table.SaveToCSVFile(Wide(path)), c.saves);
    if (!c.saves) {
      EXPECT_TRUE(text.empty());
      EXPECT_EQ(ReadBytes(path), "old");
      EXPECT_EQ(table.LastError(), msg::kFormatLosesData);
    }
  }
}

}  // namespace
}  // namespace qm
