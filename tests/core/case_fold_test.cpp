#include "core/case_fold.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <string>

#include "core/utf.h"

namespace qm {
namespace {

std::u16string Folded(std::u16string_view text) {
  std::u16string out;
  FoldCase(text, out);
  return out;
}

std::u16string Encode(char32_t cp) {
  if (cp < 0x10000) return std::u16string(1, static_cast<char16_t>(cp));
  cp -= 0x10000;
  return {static_cast<char16_t>(0xD800 + (cp >> 10)), static_cast<char16_t>(0xDC00 + (cp & 0x3FF))};
}

TEST(CaseFold, Texts) {
  struct Case {
    std::u16string_view in;
    std::u16string_view out;
  };
  const Case cases[] = {
      {u"\u0130I\u212A\u00B5", u"\u0130ik\u03BC"},  // İ keeps, I is not Turkic ı
      // Lone and reversed surrogates stay unit by unit; a pair after a lone
      // high surrogate is still folded as a pair.
      {u"A\xD800"
       u"B\xDC00"
       u"C",
       u"a\xD800"
       u"b\xDC00"
       u"c"},
      {u"\xDC00\xD801", u"\xDC00\xD801"},
      {u"\xD800\U00010400", u"\xD800\U00010428"},
      {u"Z\xD801", u"z\xD801"},
  };
  for (const auto& c : cases) EXPECT_EQ(Folded(c.in), c.out) << Utf16ToUtf8(c.in);
  // Values that are no code points come back unchanged.
  EXPECT_EQ(FoldCase(char32_t{0x110000}), char32_t{0x110000});
  EXPECT_EQ(FoldCase(char32_t{0xFFFFFFFF}), char32_t{0xFFFFFFFF});
}

TEST(CaseFold, EveryCodePointAgreesBetweenTheTwoEntryPoints) {
  // The text fold decodes, folds and re-encodes exactly as the code point fold
  // does; folding keeps the plane (and so the length) and is idempotent.
  std::u16string out;
  for (char32_t cp = 0; cp <= 0x10FFFF; ++cp) {
    const char32_t folded = FoldCase(cp);
    ASSERT_EQ(FoldCase(folded), folded) << std::hex << static_cast<uint32_t>(cp);
    ASSERT_EQ(cp > 0xFFFF, folded > 0xFFFF) << std::hex << static_cast<uint32_t>(cp);
    if (cp >= 0xD800 && cp <= 0xDFFF) {
      ASSERT_EQ(folded, cp);
      continue;
    }
    FoldCase(Encode(cp), out);
    ASSERT_EQ(out, Encode(folded)) << std::hex << static_cast<uint32_t>(cp);
  }
}

TEST(CaseFold, MatchesTheUnicodeDataWhenInstalled) {
#ifdef _WIN32
  FILE* f = std::fopen("Z:/usr/share/unicode/CaseFolding.txt", "r");
#else
  FILE* f = std::fopen("/usr/share/unicode/CaseFolding.txt", "r");
#endif
  if (!f) GTEST_SKIP() << "no CaseFolding.txt on this machine";
  std::map<uint32_t, uint32_t> simple;
  char line[512];
  unsigned code = 0, mapped = 0;
  char status = 0;
  while (std::fgets(line, sizeof line, f)) {
    if (std::sscanf(line, "%x; %c; %x;", &code, &status, &mapped) == 3 && (status == 'C' || status == 'S')) {
      simple[code] = mapped;
    }
  }
  std::fclose(f);
  ASSERT_GT(simple.size(), 1000u);
  for (uint32_t cp = 0; cp <= 0x10FFFF; ++cp) {
    const auto it = simple.find(cp);
    ASSERT_EQ(static_cast<uint32_t>(FoldCase(char32_t{cp})), it == simple.end() ? cp : it->second) << std::hex << cp;
  }
}

// Folding in place: the output may be the input.
TEST(CaseFold, InPlaceFolding) {
  std::u16string text = u"ÄPFEL \U00010400 ΣΟΦΙΑ";
  FoldCase(text.data(), text.size(), text.data());
  EXPECT_EQ(text, u"äpfel \U00010428 σοφια");
}

}  // namespace
}  // namespace qm
