// Which captions of a dialog get access keys, and from which keys. A caption
// that carries a key of its own keeps it ("&Action:"); every other caption
// that can take one gets a key only by the "&" marker inserted before one of
// its letters, its text otherwise unchanged. No two captions seen together
// share a key: the tab captions and the captions on every page (OK and Cancel
// have Enter and Esc) avoid the keys any caption of the dialog carries, and
// each page's captions avoid those and the keys given on that page.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qm {

// What a captioned control is, as far as its access key goes.
enum class CaptionRole : uint8_t {
  Label,         // a static text: keyed when the control after it is a tab stop other than a label
  Button,        // a push button, check box or radio button: keyed itself
  Other,         // a field, a list, a group box, the tab strip: never keyed
  DialogButton,  // OK and Cancel: never keyed
  EveryPage,     // a button on every page ("{V}"): keyed among the tab captions
};

struct DialogCaption {
  std::u16string text;
  int page = -1;  // the tab page it is on; -1: on every page (or the dialog has no tabs)
  CaptionRole role = CaptionRole::Other;
  bool tabStop = false;
};

struct DialogCaptions {
  std::vector<std::u16string> pages;    // the tab captions; none: the dialog is one page
  std::vector<DialogCaption> controls;  // in tab order
};

// Gives the dialog's captions their keys, in place. The keys in use on each
// page (one page for a dialog without tabs), to key a label anew with.
std::vector<std::u16string> AssignAccessKeys(DialogCaptions& dialog);

// A label's new text keyed by the same rule, among the keys its page holds
// (`pageKeys`, updated) without those of its old text.
std::u16string RekeyLabel(std::u16string& pageKeys, std::u16string_view oldText, std::u16string_view newText);

}  // namespace qm
