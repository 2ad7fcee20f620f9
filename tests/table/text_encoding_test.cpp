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

TEST(TextEncoding, Decodes) {
  const struct {
    const char* name;
    TextEncoding encoding;
    std::string bytes;
    std::u16string text;
  } cases[] = {
      {"utf8_valid", TextEncoding::UTF8, "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80z", u"a\u00e4\u20ac\U0001F600z"},
      {"utf8_long_ascii_then_multibyte", TextEncoding::UTF8,
       "0123456789abcdefghijklmnopqrstuv\xC3\xA4"
       "0123456789abcdef",
       u"0123456789abcdefghijklmnopqrstuv\u00e40123456789abcdef"},
      {"utf16_pairs_and_lone", TextEncoding::Unicode, Bytes({'a', 0, 0x3D, 0xD8, 0x00, 0xDE, 0x00, 0xDC}),
       std::u16string(u"a\U0001F600\xDC00", 4)},
      {"utf16_odd_byte", TextEncoding::Unicode, Bytes({'a', 0, 'b'}), u"a\ufffd"},
      {"ascii_high", TextEncoding::ASCII, "a\x80\xFFz", u"a??z"},
      {"ansi_high_controls", TextEncoding::ANSI, "\x80\x81\x8A\x8D\x8F\x90\x99\x9D\x9F\xA0\xFF",
       u"\u20ac\u0081\u0160\u008d\u008f\u0090\u2122\u009d\u0178\u00a0\u00ff"},
      {"utf7_rfc_example", TextEncoding::UTF7, "A+ImIDkQ.", u"A\u2262\u0391."},
      {"utf7_open_run_at_end", TextEncoding::UTF7, "x+AGE", u"xa"},
      {"utf7_empty_run", TextEncoding::UTF7, "a+!b+", u"a!b"},
      {"utf7_leftover_bits_dropped", TextEncoding::UTF7, "+AGEA-z", u"az"},
      {"utf7_high_byte", TextEncoding::UTF7,
       "a\xE9"
       "b",
       u"a\ufffdb"},
      {"utf7_lone_surrogate", TextEncoding::UTF7, "+2D0-", std::u16string(1, char16_t(0xD83D))},
  };
  for (const auto& c : cases) EXPECT_EQ(DecodeBytes(c.bytes, c.encoding), c.text) << c.name;
}

TEST(TextEncoding, Encodes) {
  const struct {
    const char* name;
    TextEncoding encoding;
    std::u16string text;
    std::string bytes;
  } cases[] = {
      {"utf8_lone_surrogates", TextEncoding::UTF8, std::u16string(u"\xD800x\xDC00", 3), "\xEF\xBF\xBDx\xEF\xBF\xBD"},
      {"utf8_long_ascii", TextEncoding::UTF8, u"abcdefghijklmnopqrstuvwxyz\u00e9",
       "abcdefghijklmnopqrstuvwxyz\xC3\xA9"},
      {"utf16", TextEncoding::Unicode, u"a\u20ac", Bytes({'a', 0, 0xAC, 0x20})},
      {"ascii", TextEncoding::ASCII, u"a\u00e9~\u20ac", "a?~?"},
      {"ansi", TextEncoding::ANSI, u"\u20ac\u0080\u0081\u0100\u00ff\u0178\u4e2d", "\x80?\x81?\xFF\x9F?"},
      {"utf7_direct_and_shifted", TextEncoding::UTF7, u"A\u2262\u0391.", "A+ImIDkQ-."},
      {"utf7_set_o_shifted", TextEncoding::UTF7, u"Hi Mom -\u263a-!", "Hi Mom -+Jjo--+ACE-"},
      {"utf7_plus_and_line_break", TextEncoding::UTF7, u"1+1\r\n", "1+-1\r\n"},
  };
  for (const auto& c : cases) EXPECT_EQ(EncodeText(c.text, c.encoding), c.bytes) << c.name;
}

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
