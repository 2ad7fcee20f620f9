// A view of one cell's text as its record keeps it: one byte a character
// when every character of the record lies below U+0100, else UTF-16. Code
// that works on UTF-16 asks for Wide(scratch), which is the view itself for
// a UTF-16 cell and a copy in the scratch for a one-byte one; hot loops look
// at IsNarrow() and read the bytes themselves. Sixteen bytes, as a
// std::u16string_view.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "core/simd_copy.h"
#include "core/simd_latin1.h"

namespace qm {

class CellText {
 public:
  constexpr CellText() noexcept = default;
  constexpr CellText(std::u16string_view wide) noexcept  // NOLINT: a UTF-16 text is a cell text
      : data_(wide.data()), size_(static_cast<uint32_t>(wide.size())) {}
  constexpr CellText(const char16_t* wide) noexcept : CellText(std::u16string_view(wide)) {}  // NOLINT
  CellText(const std::u16string& wide) noexcept : CellText(std::u16string_view(wide)) {}      // NOLINT
  static CellText Narrow(const uint8_t* bytes, size_t size) noexcept {
    CellText text;
    text.data_ = bytes;
    text.size_ = static_cast<uint32_t>(size);
    text.narrow_ = true;
    return text;
  }

  size_t size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }
  bool IsNarrow() const noexcept { return narrow_; }
  // The characters of a one-byte cell, and of a UTF-16 one.
  const uint8_t* Bytes() const noexcept { return static_cast<const uint8_t*>(data_); }
  const char16_t* Units() const noexcept { return static_cast<const char16_t*>(data_); }

  char16_t operator[](size_t index) const noexcept { return narrow_ ? Bytes()[index] : Units()[index]; }
  CellText Sub(size_t from, size_t count) const noexcept {
    return narrow_ ? Narrow(Bytes() + from, count) : CellText(std::u16string_view(Units() + from, count));
  }

  // The text as UTF-16: this cell's own units, or the bytes widened into
  // `scratch` (the view lasts as long as the scratch is left alone).
  std::u16string_view Wide(std::u16string& scratch) const {
    if (!narrow_) return {Units(), size_};
    scratch.resize(size_);
    WidenLatin1(Bytes(), size_, scratch.data());
    return scratch;
  }
  // Writes the size() units of the text to `out`; returns one past them.
  char16_t* CopyTo(char16_t* out) const noexcept {
    if (narrow_) {
      WidenLatin1(Bytes(), size_, out);
    } else {
      CopyBytes(out, Units(), size_ * sizeof(char16_t));
    }
    return out + size_;
  }
  void AppendTo(std::u16string& out) const {
    const size_t old = out.size();
    out.resize(old + size_);
    CopyTo(out.data() + old);
  }
  std::u16string ToString() const {
    std::u16string text;
    AppendTo(text);
    return text;
  }
  explicit operator std::u16string() const { return ToString(); }

  friend bool operator==(CellText a, CellText b) noexcept {
    if (a.size_ != b.size_) return false;
    if (a.narrow_ == b.narrow_) {
      return a.size_ == 0 || std::memcmp(a.data_, b.data_, a.size_ * (a.narrow_ ? 1 : sizeof(char16_t))) == 0;
    }
    for (size_t k = 0; k < a.size_; ++k) {
      if (a[k] != b[k]) return false;
    }
    return true;
  }

 private:
  const void* data_ = nullptr;
  uint32_t size_ = 0;  // a record holds less than 4 Gi characters
  bool narrow_ = false;
};

}  // namespace qm
