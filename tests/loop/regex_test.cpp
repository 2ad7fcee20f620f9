#include "loop/regex.h"

#include <gtest/gtest.h>

#include <string>

#include "core/errors.h"
#include "core/utf.h"

namespace qm {
namespace {

// Every behaviour must hold with the JIT and with the interpreter, the path a
// build without JIT support takes.
class RegexEngines : public testing::TestWithParam<bool> {};

INSTANTIATE_TEST_SUITE_P(Engines, RegexEngines, testing::Values(true, false),
                         [](const testing::TestParamInfo<bool>& info) { return info.param ? "Jit" : "Interpreter"; });

std::u16string Repeat(std::u16string_view unit, int times) {
  std::u16string text;
  for (int i = 0; i < times; ++i) text += unit;
  return text;
}

// Prose of about `units` code units that opens with "alpha " and holds no
// other alpha and no omega, then `tail`.
std::u16string Prose(size_t units, std::u16string_view tail) {
  static constexpr std::u16string_view kWords[] = {u"lorem ", u"ipsum ", u"dolor ", u"sit ", u"amet, ", u"ome ga "};
  std::u16string text = u"alpha ";
  for (uint32_t i = 1; text.size() < units; i = i * 1103515245u + 12345u) text += kWords[(i >> 16) % 6];
  return text += tail;
}

// "match", "no match", or the message of the error raised.
std::u16string Outcome(Regex& regex, std::u16string_view subject) {
  try {
    return regex.Search(subject) ? u"match" : u"no match";
  } catch (const ERegexError& e) {
    return e.Message();
  }
}

TEST_P(RegexEngines, Outcomes) {
  struct Case {
    std::u16string_view pattern;
    bool caseless;
    std::u16string subject;
    std::u16string_view outcome;
  };
  const Case cases[] = {
      {u"^a.c$", true, u"ABC", u"match"},
      {u"^a.c$", false, u"ABC", u"no match"},
      {u"b", false, u"abc", u"match"},            // anywhere in the cell
      {u"(a)(b)(c)", false, u"xabcx", u"match"},  // more groups than the match data holds
      {u"^$", false, u"", u"match"},
      // No option beyond case: not multi-line, not dot-all, not extended.
      {u"^b", false, u"a\nb", u"no match"},
      {u"a.b", false, u"a\nb", u"no match"},
      {u"a b", false, u"ab", u"no match"},
      {u"a$", false, u"a\n", u"match"},  // Perl's $ before a final newline
      // UTF semantics: code points and Unicode case.
      {u"^.$", false, u"\U00010400", u"match"},
      {u"σοφ", true, u"ΣΟΦΙΑ", u"match"},
      // A lone surrogate in the cell is no character; the rest is searched.
      {u"cd", false,
       u"ab\xD800"
       u"cd",
       u"match"},
      {u"b.c", false,
       u"ab\xD800"
       u"cd",
       u"no match"},
      {u"B", true,
       u"\xDC00"
       u"b",
       u"match"},
      // Malformed patterns: the library's message and the offset.
      {u"(abc", false, u"abc", u"missing closing parenthesis at offset 4"},
      {u"a\xD800", false, u"abc", u"UTF-16 error: missing low surrogate at end at offset 1"},
      // Runaway backtracking ends at the match limit.
      {u"(a+)+$", false, std::u16string(40, u'a') + u"!", u"match limit exceeded"},
      {u"(a|aa)+$", false, std::u16string(60, u'a') + u"!", u"match limit exceeded"},
      {u"^(\\w+\\s?)*$", false, u"An input that ends with a character the class refuses!", u"match limit exceeded"},
      // Each start position within its limit, but thousands of them: the
      // work of the whole cell is bounded.
      {u"(a+)+$", false, Repeat(u"aaaaaaaaaaaaaaaaa!", 120), u"match limit exceeded"},
      {u"(a|aa)+$", false, Repeat(u"aaaaaaaaaaaaaaaaaaaaaaa!", 100), u"match limit exceeded"},
      // A long cell that a sound pattern backtracks over, and one it scans.
      {u"a.*b", false, u"a" + std::u16string(500'000, u'x'), u"no match"},
      {u"\\d+-\\d+!", false, Repeat(u"12345-", 50'000), u"no match"},
      // 100,000 pending backtracks: within the JIT's stack and the
      // interpreter's heap alike; ten times as many are beyond both.
      {u"^(a|b)*$", false, std::u16string(100'000, u'a'), u"match"},
      {u"^(a|b)*$", false, std::u16string(100'000, u'a') + u"c", u"no match"},
      {u"^(a|b)*$", false, std::u16string(1'000'000, u'a'), u"heap limit exceeded"},
      // A lazy search from one start position across 120 KB and 1 MB cells:
      // linear work, however long the cell.
      {u"alpha.*?omega", false, Prose(120'000, u"omega"), u"match"},
      {u"alpha.*?omega", false, Prose(120'000, u"end"), u"no match"},
      {u"alpha.*?omega", true, Prose(1'000'000, u"OMEGA"), u"match"},
      {u"alpha.*?omega", false, Prose(1'000'000, u"end"), u"no match"},
      // Runaway backtracking on a megabyte stops too, its memory capped.
      {u"(a+)+$", false, std::u16string(1'000'000, u'a') + u"b", u"match limit exceeded"},
  };
  for (const auto& c : cases) {
    Regex regex(std::u16string(c.pattern), c.caseless, GetParam());
    EXPECT_EQ(Outcome(regex, c.subject), c.outcome) << Utf16ToUtf8(c.pattern);
    // Reused: a second search gives the same, and a failed one left it usable.
    EXPECT_EQ(Outcome(regex, c.subject), c.outcome) << Utf16ToUtf8(c.pattern);
    EXPECT_EQ(regex.IsCompiled(), c.outcome.find(u" at offset ") == std::u16string_view::npos);
  }
}

}  // namespace
}  // namespace qm
