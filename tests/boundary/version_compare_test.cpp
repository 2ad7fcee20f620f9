#include "boundary/version_compare.h"

#include <gtest/gtest.h>

namespace qm {
namespace {

TEST(VersionCompare, HostVersionsAgainstTheMinimum) {
  struct Case {
    std::u16string_view host;
    int expected;
  };
  const Case cases[] = {
      {u"9.5.0.0", 0}, {u"9.5.0.1", 1}, {u"10", 1},   {u"9.50", 1},       {u"v9.5", -1},
      {u"", -1},       {u"9", -1},      {u"9.5a", 0}, {u"9.4.99999", -1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CompareVersions(c.host, u"9.5"), c.expected) << std::string(c.host.begin(), c.host.end());
  }
  EXPECT_EQ(CompareVersions(u"1.2.3.4", u"1.2.3.5"), -1);
  EXPECT_EQ(CompareVersions(u"1.2.3.4.9", u"1.2.3.4"), 0);  // a fifth part is not read
}

}  // namespace
}  // namespace qm
