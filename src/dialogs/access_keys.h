// Access keys ("&" before a letter) for the captions of a dialog: each caption
// that can take one gets a key no other caption shown with it has, so that
// Alt and the key reach its control. A caption that already carries a key
// keeps it.
#pragma once

#include <string>
#include <string_view>

namespace qm {

class AccessKeys {
 public:
  // The keys already in use where the caption is shown (upper-case letters and digits).
  explicit AccessKeys(std::u16string taken = {}) : taken_(std::move(taken)) {}

  // The caption with a key: its first letter or digit if free, else the first
  // free one that starts a word, else any free one; unchanged when it has a
  // key already or none is free. The key is then taken.
  std::u16string Assign(std::u16string_view caption);

  const std::u16string& Taken() const { return taken_; }

  // The key of a caption (upper case), or 0 when it has none.
  static char16_t KeyOf(std::u16string_view caption);

 private:
  bool Free(char16_t c) const;
  std::u16string taken_;
};

}  // namespace qm
