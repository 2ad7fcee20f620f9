#include "core/text_lines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qm {
namespace {

TEST(TextLines, CutsAtEveryBreak) {
  const struct {
    const char* name;
    std::u16string text;
    std::vector<std::u16string> lines;
  } cases[] = {
      {"empty_text_no_lines", u"", {}},
      {"trailing_break_no_extra_line", u"abc\r\n", {u"abc"}},
      {"lone_cr", u"a\rb\r", {u"a", u"b"}},
      {"lf_cr_counts_twice", u"a\n\rb", {u"a", u"", u"b"}},
      {"empty_lines_kept", u"\r\n\r\nx\n\n", {u"", u"", u"x", u""}},
      {"nul_ends_text", std::u16string(u"a;b\r\nc\0d\r\ne", 12), {u"a;b", u"c"}},
      {"nul_first", std::u16string(u"\0a", 2), {}},
      {"only_break", u"\n", {u""}},
  };
  for (const auto& c : cases) EXPECT_EQ(SplitLines(c.text), c.lines) << c.name;
}

}  // namespace
}  // namespace qm
