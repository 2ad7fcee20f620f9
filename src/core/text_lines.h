// Cutting text into lines: a line ends at CR LF, a lone CR or a lone LF (LF CR
// is two breaks); a break at the very end adds no empty line; a character 0
// ends the text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qm {

// Walks text line by line.
class TextLineCursor {
 public:
  TextLineCursor() = default;
  TextLineCursor(const char16_t* begin, const char16_t* end) : p_(begin), end_(end) {}
  explicit TextLineCursor(std::u16string_view text) : TextLineCursor(text.data(), text.data() + text.size()) {}

  // The next line; false when the text is used up.
  bool Next(std::u16string_view& line);
  // True once a character 0 has ended the text.
  bool EndedByNul() const noexcept { return nul_; }

 private:
  const char16_t* p_ = nullptr;
  const char16_t* end_ = nullptr;
  bool nul_ = false;
};

// The lines of a text.
std::vector<std::u16string> SplitLines(std::u16string_view text);

}  // namespace qm
