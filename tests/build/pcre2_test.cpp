// PCRE2 as this build links it: the 16-bit library, Unicode, and JIT.
#define PCRE2_CODE_UNIT_WIDTH 16
#include <pcre2.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>

namespace {

struct CodeDeleter {
  void operator()(pcre2_code* code) const { pcre2_code_free(code); }
};
struct MatchDataDeleter {
  void operator()(pcre2_match_data* data) const { pcre2_match_data_free(data); }
};
using Code = std::unique_ptr<pcre2_code, CodeDeleter>;
using MatchData = std::unique_ptr<pcre2_match_data, MatchDataDeleter>;

PCRE2_SPTR16 Sptr(const std::u16string& text) { return reinterpret_cast<PCRE2_SPTR16>(text.c_str()); }

Code Compile(const std::u16string& pattern, uint32_t options) {
  int error = 0;
  PCRE2_SIZE offset = 0;
  Code code(pcre2_compile(Sptr(pattern), pattern.size(), options, &error, &offset, nullptr));
  EXPECT_NE(code, nullptr) << "PCRE2 error " << error << " at " << offset;
  return code;
}

TEST(Pcre2, BuiltWithUnicodeAndJit) {
  uint32_t unicode = 0;
  uint32_t jit = 0;
  ASSERT_GE(pcre2_config(PCRE2_CONFIG_UNICODE, &unicode), 0);
  ASSERT_GE(pcre2_config(PCRE2_CONFIG_JIT, &jit), 0);
  EXPECT_EQ(unicode, 1u);
  EXPECT_EQ(jit, 1u);
}

TEST(Pcre2, JitMatchesCaselessUnicodeWithinText) {
  // "straße" in any case, unanchored, with a non-ASCII letter to fold.
  const Code code = Compile(u"STRASSE|STRAẞE|MÜNCHEN", PCRE2_CASELESS | PCRE2_UTF);
  ASSERT_NE(code, nullptr);
  ASSERT_EQ(pcre2_jit_compile(code.get(), PCRE2_JIT_COMPLETE), 0);
  size_t jit_size = 0;
  ASSERT_EQ(pcre2_pattern_info(code.get(), PCRE2_INFO_JITSIZE, &jit_size), 0);
  EXPECT_GT(jit_size, 0u);

  const MatchData data(pcre2_match_data_create_from_pattern(code.get(), nullptr));
  ASSERT_NE(data, nullptr);
  const struct {
    std::u16string subject;
    int expected_start;  // -1: no match
  } cases[] = {
      {u"Lieferung nach münchen, Bahnhof", 15},
      {u"12 straße 7", 3},
      {u"Berlin", -1},
      {u"", -1},
  };
  for (const auto& c : cases) {
    const int rc = pcre2_jit_match(code.get(), Sptr(c.subject), c.subject.size(), 0, 0, data.get(), nullptr);
    if (c.expected_start < 0) {
      EXPECT_EQ(rc, PCRE2_ERROR_NOMATCH) << "subject length " << c.subject.size();
    } else {
      ASSERT_EQ(rc, 1) << "subject length " << c.subject.size();
      EXPECT_EQ(pcre2_get_ovector_pointer(data.get())[0], static_cast<PCRE2_SIZE>(c.expected_start));
    }
    // The interpreter agrees with the JIT code.
    const int interpreted =
        pcre2_match(code.get(), Sptr(c.subject), c.subject.size(), 0, PCRE2_NO_JIT, data.get(), nullptr);
    EXPECT_EQ(interpreted, rc);
  }
}

TEST(Pcre2, ReportsPatternErrors) {
  int error = 0;
  PCRE2_SIZE offset = 0;
  const std::u16string pattern = u"(unclosed";
  pcre2_code* code = pcre2_compile(Sptr(pattern), pattern.size(), PCRE2_UTF, &error, &offset, nullptr);
  EXPECT_EQ(code, nullptr);
  EXPECT_EQ(error, PCRE2_ERROR_MISSING_CLOSING_PARENTHESIS);
  PCRE2_UCHAR16 message[256];
  EXPECT_GT(pcre2_get_error_message(error, message, 256), 0);
}

}  // namespace
