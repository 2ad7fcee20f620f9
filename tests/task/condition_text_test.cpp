#include "task/condition_text.h"

#include <gtest/gtest.h>

#include "core/step_keys.h"
#include "core/utf.h"

namespace qm {
namespace {

TEST(ConditionText, KeysAndLines) {
  const std::pair<int32_t, std::u16string_view> names[] = {
      {10, u"condition0000000A"},
      {16, u"condition00000010"},
  };
  for (const auto& [index, name] : names) EXPECT_EQ(keys::IndexedName(keys::kCondition, index), name);

  const std::pair<ConditionFields, std::u16string_view> lines[] = {
      {{u"2", u"New York", false, false}, u"2,\"New York\",0,0"},
      {{u"1", u"", false, false}, u"1,,0,0"},
      {{u"1", u"say \"hi\"", true, true}, u"1,\"say \"\"hi\"\"\",1,1"},
      {{u"{col}", u"^\\d+$", false, true}, u"{col},^\\d+$,0,1"},
      {{u"", u"a,b", false, false}, u",\"a,b\",0,0"},
  };
  for (const auto& [fields, line] : lines) {
    EXPECT_EQ(JoinCondition(fields), line);
    EXPECT_EQ(SplitCondition(line), fields) << Utf16ToUtf8(line);
  }
}

}  // namespace
}  // namespace qm
