// The encodings a table file is read and written in.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "table/text_encoding.h"

namespace qm {
namespace {

std::string Bytes(std::initializer_list<int> values) {
  std::string s;
  for (int v : values) s.push_back(static_cast<char>(v));
  return s;
}

TEST(TextEncoding, IndexAndByteOrderMark) {
  struct Case {
    int32_t index;
    TextEncoding encoding;
    std::string mark;
  };
  const Case cases[] = {{-1, TextEncoding::Default, ""},     {0, TextEncoding::Default, ""},
                        {1, TextEncoding::UTF7, ""},         {2, TextEncoding::UTF8, "\xEF\xBB\xBF"},
                        {3, TextEncoding::Unicode, "\xFF\xFE"}, {4, TextEncoding::ASCII, ""},
                        {5, TextEncoding::ANSI, ""},         {6, TextEncoding::Default, ""},
                        {1000, TextEncoding::Default, ""}};
  for (const Case& c : cases) {
    EXPECT_EQ(EncodingFromIndex(c.index), c.encoding) << c.index;
    EXPECT_EQ(std::string(ByteOrderMark(c.encoding)), c.mark) << c.index;
  }
}

struct DecodeCase {
  const char* name;
  TextEncoding encoding;
  std::string bytes;
  std::u16string text;
};

class DecodeTest : public ::testing::TestWithParam<DecodeCase> {};

TEST_P(DecodeTest, Decodes) {
  const DecodeCase& c = GetParam();
  EXPECT_EQ(DecodeBytes(c.bytes, c.encoding), c.text);
}

INSTANTIATE_TEST_SUITE_P(
    Bytes, DecodeTest,
    ::testing::Values(
        DecodeCase{"utf8_valid", TextEncoding::UTF8, "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80z", u"a\u00e4\u20ac\U0001F600z"},
        DecodeCase{"utf8_long_ascii_then_multibyte", TextEncoding::UTF8,
                   "0123456789abcdefghijklmnopqrstuv\xC3\xA4" "0123456789abcdef", u"0123456789abcdefghijklmnopqrstuv\u00e40123456789abcdef"},
        DecodeCase{"utf8_bom_is_text", TextEncoding::UTF8, "\xEF\xBB\xBFx", u"\ufeffx"},
        DecodeCase{"utf16_pairs_and_lone", TextEncoding::Unicode, Bytes({'a', 0, 0x3D, 0xD8, 0x00, 0xDE, 0x00, 0xDC}),
                   std::u16string(u"a\U0001F600\xDC00", 4)},
        DecodeCase{"utf16_odd_byte", TextEncoding::Unicode, Bytes({'a', 0, 'b'}), u"a\ufffd"},
        DecodeCase{"ascii_high", TextEncoding::ASCII, "a\x80\xFFz", u"a??z"},
        DecodeCase{"ansi_high_controls", TextEncoding::ANSI, "\x80\x81\x8A\x8D\x8F\x90\x99\x9D\x9F\xA0\xFF",
                   u"\u20ac\u0081\u0160\u008d\u008f\u0090\u2122\u009d\u0178\u00a0\u00ff"},
        DecodeCase{"default_is_ansi", TextEncoding::Default, "\x93q\x94", u"\u201cq\u201d"},
        DecodeCase{"utf7_rfc_example", TextEncoding::UTF7, "A+ImIDkQ.", u"A\u2262\u0391."},
        DecodeCase{"utf7_rfc_smiley", TextEncoding::UTF7, "Hi Mom -+Jjo--!", u"Hi Mom -\u263a-!"},
        DecodeCase{"utf7_rfc_japanese", TextEncoding::UTF7, "+ZeVnLIqe-", u"\u65e5\u672c\u8a9e"},
        DecodeCase{"utf7_plus", TextEncoding::UTF7, "1+-1", u"1+1"},
        DecodeCase{"utf7_open_run_at_end", TextEncoding::UTF7, "x+AGE", u"xa"},
        DecodeCase{"utf7_empty_run", TextEncoding::UTF7, "a+!b+", u"a!b"},
        DecodeCase{"utf7_leftover_bits_dropped", TextEncoding::UTF7, "+AGEA-z", u"az"},
        DecodeCase{"utf7_high_byte", TextEncoding::UTF7, "a\xE9" "b", u"a\ufffdb"},
        DecodeCase{"utf7_lone_surrogate", TextEncoding::UTF7, "+2D0-", std::u16string(1, char16_t(0xD83D))}),
    [](const ::testing::TestParamInfo<DecodeCase>& info) { return std::string(info.param.name); });

struct EncodeCase {
  const char* name;
  TextEncoding encoding;
  std::u16string text;
  std::string bytes;
};

class EncodeTest : public ::testing::TestWithParam<EncodeCase> {};

TEST_P(EncodeTest, Encodes) {
  const EncodeCase& c = GetParam();
  EXPECT_EQ(EncodeText(c.text, c.encoding), c.bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, EncodeTest,
    ::testing::Values(
        EncodeCase{"utf8", TextEncoding::UTF8, u"a\u00e4\u20ac\U0001F600", "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"},
        EncodeCase{"utf8_lone_surrogates", TextEncoding::UTF8, std::u16string(u"\xD800x\xDC00", 3),
                   "\xEF\xBF\xBDx\xEF\xBF\xBD"},
        EncodeCase{"utf8_long_ascii", TextEncoding::UTF8, u"abcdefghijklmnopqrstuvwxyz\u00e9", "abcdefghijklmnopqrstuvwxyz\xC3\xA9"},
        EncodeCase{"utf16", TextEncoding::Unicode, u"a\u20ac", Bytes({'a', 0, 0xAC, 0x20})},
        EncodeCase{"ascii", TextEncoding::ASCII, u"a\u00e9~\u20ac", "a?~?"},
        EncodeCase{"ansi", TextEncoding::ANSI, u"\u20ac\u0080\u0081\u0100\u00ff\u0178\u4e2d", "\x80?\x81?\xFF\x9F?"},
        EncodeCase{"utf7_direct_and_shifted", TextEncoding::UTF7, u"A\u2262\u0391.", "A+ImIDkQ-."},
        EncodeCase{"utf7_set_o_shifted", TextEncoding::UTF7, u"Hi Mom -\u263a-!", "Hi Mom -+Jjo--+ACE-"},
        EncodeCase{"utf7_plus_and_line_break", TextEncoding::UTF7, u"1+1\r\n", "1+-1\r\n"},
        EncodeCase{"utf7_japanese", TextEncoding::UTF7, u"\u65e5\u672c\u8a9e", "+ZeVnLIqe-"}),
    [](const ::testing::TestParamInfo<EncodeCase>& info) { return std::string(info.param.name); });

// Text that each encoding can hold comes back unchanged, and so do bytes that
// are the encoding's own output.
TEST(TextEncoding, RoundTripsAreLossless) {
  std::mt19937 random(99);
  const std::u16string ansiRepertoire = u"az;\"\r\n \u20ac\u0081\u201a\u0192\u0178\u00a0\u00e9\u00ff";
  for (int round = 0; round < 300; ++round) {
    std::u16string any, valid, ansi, ascii, mostlyAscii;
    const size_t length = random() % 200;
    for (size_t k = 0; k < length; ++k) {
      const char16_t unit = static_cast<char16_t>(random() % 0x10000);
      any.push_back(unit);
      if (unit >= 0xD800 && unit <= 0xDFFF) {
        valid.append(u"\U0001F600");
      } else {
        valid.push_back(unit);
      }
      ansi.push_back(ansiRepertoire[random() % ansiRepertoire.size()]);
      ascii.push_back(static_cast<char16_t>(random() % 0x80));
      // Long ASCII runs broken now and then by one, two or three bytes' worth.
      const char16_t rare[] = {u'\u00e9', u'\u0416', u'\u4e2d', u'\u00ff'};
      mostlyAscii.push_back(random() % 12 ? static_cast<char16_t>(u' ' + random() % 95) : rare[random() % 4]);
    }
    valid.append(u"plain tail");
    EXPECT_EQ(DecodeBytes(EncodeText(any, TextEncoding::Unicode), TextEncoding::Unicode), any);
    EXPECT_EQ(DecodeBytes(EncodeText(any, TextEncoding::UTF7), TextEncoding::UTF7), any);
    EXPECT_EQ(DecodeBytes(EncodeText(valid, TextEncoding::UTF8), TextEncoding::UTF8), valid);
    EXPECT_EQ(DecodeBytes(EncodeText(mostlyAscii, TextEncoding::UTF8), TextEncoding::UTF8), mostlyAscii);
    EXPECT_EQ(DecodeBytes(EncodeText(ansi, TextEncoding::ANSI), TextEncoding::ANSI), ansi);
    EXPECT_EQ(DecodeBytes(EncodeText(ascii, TextEncoding::ASCII), TextEncoding::ASCII), ascii);

    const std::string utf7 = EncodeText(any, TextEncoding::UTF7);
    EXPECT_EQ(EncodeText(DecodeBytes(utf7, TextEncoding::UTF7), TextEncoding::UTF7), utf7);
    std::string raw;
    for (size_t k = 0; k < 2 * length; ++k) raw.push_back(static_cast<char>(random()));
    EXPECT_EQ(EncodeText(DecodeBytes(raw, TextEncoding::Unicode), TextEncoding::Unicode), raw);
    EXPECT_EQ(EncodeText(DecodeBytes(raw, TextEncoding::ANSI), TextEncoding::ANSI), raw);
  }
}

}  // namespace
}  // namespace qm
