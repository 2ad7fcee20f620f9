#include <gtest/gtest.h>

#include "dialogs/access_keys.h"

namespace qm {
namespace {

// Captions shown together get distinct keys, first letters and word starts
// first; a caption's own key is kept; captions without a free letter stay as
// they are.
TEST(AccessKeys, GivesEachCaptionShownTogetherItsOwnKey) {
  struct Case {
    std::u16string taken;
    std::u16string_view caption, expected;
  };
  const Case cases[] = {
      {u"", u"General", u"&General"},
      {u"G", u"Source Format", u"&Source Format"},
      {u"GS", u"Source Format", u"Source &Format"},
      {u"SF", u"Skip first lines: ", u"Skip first &lines: "},
      {u"SFL", u"Skip first lines: ", u"S&kip first lines: "},
      {u"", u"{V}", u"{&V}"},
      {u"C", u"Column number (from 1):", u"Column &number (from 1):"},
      {u"CNF", u"Column number (from 1):", u"Column number (from &1):"},
      {u"A", u"&Action:", u"&Action:"},
      {u"", u"Fish && Chips", u"&Fish && Chips"},
      {u"F", u"Fish && Chips", u"Fish && &Chips"},
      {u"", u"...", u"..."},
      {u"ABC", u"cab", u"cab"},
  };
  for (const auto& c : cases) {
    AccessKeys keys(c.taken);
    const auto given = keys.Assign(c.caption);
    EXPECT_EQ(given, c.expected) << std::string(c.caption.begin(), c.caption.end());
    const char16_t key = AccessKeys::KeyOf(given);
    EXPECT_EQ(keys.Taken(), key ? c.taken + key : c.taken);
  }
  EXPECT_EQ(AccessKeys::KeyOf(u"a && b"), 0);
  EXPECT_EQ(AccessKeys::KeyOf(u"a && &b"), u'B');
}

}  // namespace
}  // namespace qm
