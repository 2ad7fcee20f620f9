// Errors that leave an operation as exceptions. The table layer catches them
// and keeps their text; those that escape an executor travel on to the host.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qm {

// Base of every error we raise: what() is UTF-8, Message() the UTF-16 original.
class QmError : public std::runtime_error {
 public:
  explicit QmError(std::u16string_view message);
  const std::u16string& Message() const noexcept { return message_; }

 private:
  std::u16string message_;
};

// An index outside a list (rows, cells, field names).
class EListError : public QmError {
  using QmError::QmError;
};

// A text that does not convert to the number asked for.
class EConvertError : public QmError {
  using QmError::QmError;
};

// A file that cannot be opened, read or written.
class EFileError : public QmError {
  using QmError::QmError;
};

// A regular expression that does not compile or cannot be matched.
class ERegexError : public QmError {
  using QmError::QmError;
};

[[noreturn]] void RaiseListIndexError(int64_t index);
[[noreturn]] void RaiseInvalidInteger(std::u16string_view text);

// The text of any exception, for keeping as a table's last error.
std::u16string ExceptionText(const std::exception& e);

// Replaces the first %s or %d placeholders in order with the given texts.
std::u16string Format(std::u16string_view pattern, std::initializer_list<std::u16string_view> args);

}  // namespace qm
