#include <gtest/gtest.h>

#include "dialogs/access_keys.h"
#include "dialogs/dialog_access_keys.h"

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

// A dialog of two pages: the tab captions and "{V}" avoid every key a caption
// carries, and a key carried on every page is taken on each; on each page the
// buttons and the labels that name a tab stop get keys of their own, while
// notes, group boxes and the labels of what the keyboard cannot reach stay as
// they are; a label keyed anew gives up its old key.
TEST(AccessKeys, DialogCaptionsGetKeysByPage) {
  using R = CaptionRole;
  DialogCaptions dialog{{u"General", u"Source"},
                        {
                            {u"", -1, R::Other, true},  // the tab strip
                            {u"&Zoom", -1, R::Button, true},
                            {u"Column:", 0, R::Label, false},
                            {u"", 0, R::Other, true},
                            {u"Columns count from 1.", 0, R::Label, false},
                            {u"&Action:", 0, R::Label, false},
                            {u"", 0, R::Other, true},
                            {u"Case sensitive", 0, R::Button, true},
                            {u"Options", 0, R::Other, false},
                            {u"Count:", 0, R::Label, false},
                            {u"", 0, R::Other, false},
                            {u"Zone:", 1, R::Label, false},
                            {u"", 1, R::Other, true},
                            {u"OK", -1, R::DialogButton, true},
                            {u"Cancel", -1, R::DialogButton, true},
                            {u"{V}", -1, R::EveryPage, true},
                        }};
  const auto pageKeys = AssignAccessKeys(dialog);
  EXPECT_EQ(dialog.pages, (std::vector<std::u16string>{u"&General", u"&Source"}));
  std::vector<std::u16string> texts;
  for (const auto& control : dialog.controls) texts.push_back(control.text);
  EXPECT_EQ(texts, (std::vector<std::u16string>{u"", u"&Zoom", u"&Column:", u"", u"Columns count from 1.", u"&Action:",
                                                u"", u"Cas&e sensitive", u"Options", u"Count:", u"", u"Z&one:", u"",
                                                u"OK", u"Cancel", u"{&V}"}));
  ASSERT_EQ(pageKeys.size(), 2u);
  EXPECT_EQ(pageKeys[0], u"GSVZACAE");
  EXPECT_EQ(pageKeys[1], u"GSVZO");

  std::u16string keys = pageKeys[0];
  EXPECT_EQ(RekeyLabel(keys, u"&Column:", u"Pattern:"), u"&Pattern:");
  EXPECT_EQ(keys, u"GSVZAAEP");
  EXPECT_EQ(RekeyLabel(keys, u"&Pattern:", u"Column:"), u"&Column:");
  EXPECT_EQ(keys, u"GSVZAAEC");

  // Without tabs the dialog is one page.
  DialogCaptions single{{},
                        {{u"Name:", -1, R::Label, false}, {u"", -1, R::Other, true}, {u"{V}", -1, R::EveryPage, true}}};
  EXPECT_EQ(AssignAccessKeys(single), std::vector<std::u16string>{u"VN"});
  EXPECT_EQ(single.controls[0].text, u"&Name:");
  EXPECT_EQ(single.controls[2].text, u"{&V}");
}

}  // namespace
}  // namespace qm
