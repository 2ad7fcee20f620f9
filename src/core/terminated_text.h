// A zero-terminated copy of a text for a C interface, kept in the object
// itself up to a few hundred characters so that the usual names and values
// handed to the host cost no heap allocation; longer texts go to the heap.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace qm {

class TerminatedText {
 public:
  explicit TerminatedText(std::u16string_view text) {
    char16_t* to = inline_;
    if (text.size() >= kInlineUnits) {
      heap_ = std::make_unique<char16_t[]>(text.size() + 1);
      to = heap_.get();
    }
    if (!text.empty()) std::char_traits<char16_t>::copy(to, text.data(), text.size());
    to[text.size()] = 0;
  }
  TerminatedText(const TerminatedText&) = delete;
  TerminatedText& operator=(const TerminatedText&) = delete;

  const char16_t* c_str() const noexcept { return heap_ ? heap_.get() : inline_; }

 private:
  static constexpr size_t kInlineUnits = 256;
  char16_t inline_[kInlineUnits];
  std::unique_ptr<char16_t[]> heap_;
};

}  // namespace qm
