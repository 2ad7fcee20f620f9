// Reading a fuzz input: option bytes taken from the front, then the rest.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qm::fuzz {

class Input {
 public:
  Input(const uint8_t* data, size_t size) : data_(data), size_(size) {}

  // The next byte, or 0 once the input is used up.
  uint8_t Byte() { return pos_ < size_ ? data_[pos_++] : 0; }
  // Everything not yet taken, as bytes.
  std::string_view Rest() const { return {reinterpret_cast<const char*>(data_) + pos_, size_ - pos_}; }
  // Everything not yet taken, read as raw UTF-16 code units (lone surrogates
  // included); an odd last byte is dropped.
  std::u16string RestAsUnits() const {
    std::u16string units((size_ - pos_) / 2, u'\0');
    for (size_t k = 0; k < units.size(); ++k)
      units[k] = static_cast<char16_t>(data_[pos_ + 2 * k] | (data_[pos_ + 2 * k + 1] << 8));
    return units;
  }

 private:
  const uint8_t* data_;
  size_t size_;
  size_t pos_ = 0;
};

}  // namespace qm::fuzz
