#include "table/memory_data_storage.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "core/convert.h"
#include "core/errors.h"
#include "platform/decimal_separator.h"

namespace qm {

namespace {

constexpr char16_t FoldAscii(char16_t c) { return (c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - 32) : c; }

constexpr bool IsNumberBlank(char16_t c) { return c == u' ' || c == u'\t'; }
constexpr bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

// A sort key for text: the first four (folded) units packed so that most
// comparisons are decided by one integer compare, then the full text.
struct TextKey {
  uint64_t prefix;
  const char16_t* text;
  uint32_t length;
  uint32_t row;
};

template <bool Fold>
uint64_t PackPrefix(std::u16string_view s) {
  uint64_t prefix = 0;
  for (size_t k = 0; k < 4; ++k) {
    const char16_t c = k < s.size() ? (Fold ? FoldAscii(s[k]) : s[k]) : 0;
    prefix = (prefix << 16) | c;
  }
  return prefix;
}

template <bool Fold>
bool TextLess(const TextKey& a, const TextKey& b) {
  if (a.prefix != b.prefix) return a.prefix < b.prefix;
  const uint32_t n = std::min(a.length, b.length);
  for (uint32_t k = 4; k < n; ++k) {
    const char16_t x = Fold ? FoldAscii(a.text[k]) : a.text[k];
    const char16_t y = Fold ? FoldAscii(b.text[k]) : b.text[k];
    if (x != y) return x < y;
  }
  return a.length < b.length;
}

struct NumberKey {
  double value;
  uint32_t row;
};

}  // namespace

bool TryTextToFloat(std::u16string_view text, double& value) {
  const char16_t separator = DecimalSeparator();
  size_t i = 0, n = text.size();
  while (i < n && IsNumberBlank(text[i])) ++i;
  while (n > i && IsNumberBlank(text[n - 1])) --n;
  if (i == n || n - i > 4096) return false;
  // Copied as ASCII with a point for the separator; '+' is left out because
  // the converter does not take it.
  std::string ascii;
  ascii.reserve(n - i);
  if (text[i] == u'+' || text[i] == u'-') {
    if (text[i] == u'-') ascii.push_back('-');
    ++i;
  }
  size_t digits = 0;
  for (; i < n && IsDigit(text[i]); ++i, ++digits) ascii.push_back(static_cast<char>(text[i]));
  if (i < n && text[i] == separator) {
    ascii.push_back('.');
    for (++i; i < n && IsDigit(text[i]); ++i, ++digits) ascii.push_back(static_cast<char>(text[i]));
  }
  if (digits == 0) return false;
  if (i < n && (text[i] == u'e' || text[i] == u'E')) {
    ascii.push_back('e');
    ++i;
    if (i < n && (text[i] == u'+' || text[i] == u'-')) ascii.push_back(static_cast<char>(text[i++]));
    size_t exponentDigits = 0;
    for (; i < n && IsDigit(text[i]); ++i, ++exponentDigits) ascii.push_back(static_cast<char>(text[i]));
    if (exponentDigits == 0) return false;
  }
  if (i != n) return false;
  double parsed = 0;
  const auto result = std::from_chars(ascii.data(), ascii.data() + ascii.size(), parsed);
  if (result.ec != std::errc() || result.ptr != ascii.data() + ascii.size()) return false;
  value = parsed;
  return true;
}

int32_t NumericCompare(std::u16string_view a, std::u16string_view b) {
  double x = 0, y = 0;
  if (!TryTextToFloat(a, x)) x = 0;
  if (!TryTextToFloat(b, y)) y = 0;
  return x < y ? -1 : (x > y ? 1 : 0);
}

void TMemoryStrDataStorage::CheckRow(int32_t row) const {
  if (row < 0 || row >= RecordCount()) RaiseListIndexError(row);
}

void TMemoryStrDataStorage::AddRecord(Record record) {
  record.PadTo(FieldCount());
  records_.push_back(std::move(record));
}

void TMemoryStrDataStorage::ClearData() noexcept {
  records_.clear();
  records_.shrink_to_fit();
  fields_.clear();
}

void TMemoryStrDataStorage::DeleteRecord(int32_t row) {
  CheckRow(row);
  records_.erase(records_.begin() + row);
}

std::u16string_view TMemoryStrDataStorage::GetCellValue(int32_t row, int32_t column) const {
  return GetDataRecord(row).At(column);
}

void TMemoryStrDataStorage::SetCellValue(int32_t row, int32_t column, std::u16string_view text) {
  GetDataRecord(row).Set(column, text);
}

Record& TMemoryStrDataStorage::GetDataRecord(int32_t row) {
  CheckRow(row);
  return records_[static_cast<size_t>(row)];
}

const Record& TMemoryStrDataStorage::GetDataRecord(int32_t row) const {
  CheckRow(row);
  return records_[static_cast<size_t>(row)];
}

const std::u16string& TMemoryStrDataStorage::GetFieldName(int32_t column) const {
  if (column < 0 || column >= FieldCount()) RaiseListIndexError(column);
  return fields_[static_cast<size_t>(column)];
}

void TMemoryStrDataStorage::SetFieldsname(int32_t column, std::u16string_view name) {
  if (column < 0 || column >= FieldCount()) RaiseListIndexError(column);
  fields_[static_cast<size_t>(column)] = name;
}

void TMemoryStrDataStorage::SetCapacity(int32_t count) {
  if (count > 0) records_.reserve(static_cast<size_t>(count));
}

void TMemoryStrDataStorage::InsertColumn(int32_t position, ColumnFill fill, std::u16string_view name,
                                         std::u16string_view value) {
  if (position > FieldCount()) position = -1;
  if (position < 0) {
    fields_.emplace_back(name);
  } else {
    fields_.emplace(fields_.begin() + position, name);
  }
  for (size_t i = 0; i < records_.size(); ++i) {
    std::u16string number;
    std::u16string_view text;
    if (fill == ColumnFill::RowNumber) {
      number = IntToStr(static_cast<int64_t>(i) + 1);
      text = number;
    } else if (fill == ColumnFill::Value) {
      text = value;
    }
    Record& record = records_[i];
    if (position < 0) {
      record.Append(text);
    } else {
      record.Insert(position, text);
    }
  }
}

void TMemoryStrDataStorage::MoveColumn(int32_t from, int32_t to) {
  if (from == to) return;
  const int32_t count = FieldCount();
  if (from < 0 || from >= count) RaiseListIndexError(from);
  if (to < 0 || to >= count) RaiseListIndexError(to);
  std::u16string name = std::move(fields_[static_cast<size_t>(from)]);
  fields_.erase(fields_.begin() + from);
  fields_.insert(fields_.begin() + to, std::move(name));
  for (Record& record : records_) record.Move(from, to);
}

void TMemoryStrDataStorage::RemoveColumn(int32_t column) {
  if (column < 0 || column >= FieldCount()) RaiseListIndexError(column);
  fields_.erase(fields_.begin() + column);
  for (Record& record : records_) record.Delete(column);
}

void TMemoryStrDataStorage::SortByField(int32_t column, bool caseSensitive, bool descending, bool numeric) {
  const size_t count = records_.size();
  std::vector<uint32_t> order(count);
  if (numeric) {
    // Each key is converted once, not at every comparison.
    std::vector<NumberKey> keys(count);
    for (size_t i = 0; i < count; ++i) {
      double value = 0;
      if (!TryTextToFloat(records_[i].At(column), value)) value = 0;
      keys[i] = {value, static_cast<uint32_t>(i)};
    }
    std::sort(keys.begin(), keys.end(), [](const NumberKey& a, const NumberKey& b) { return a.value < b.value; });
    for (size_t i = 0; i < count; ++i) order[i] = keys[i].row;
  } else {
    std::vector<TextKey> keys(count);
    for (size_t i = 0; i < count; ++i) {
      const std::u16string_view cell = records_[i].At(column);
      keys[i] = {caseSensitive ? PackPrefix<false>(cell) : PackPrefix<true>(cell), cell.data(),
                 static_cast<uint32_t>(cell.size()), static_cast<uint32_t>(i)};
    }
    if (caseSensitive) {
      std::sort(keys.begin(), keys.end(), TextLess<false>);
    } else {
      std::sort(keys.begin(), keys.end(), TextLess<true>);
    }
    for (size_t i = 0; i < count; ++i) order[i] = keys[i].row;
  }
  std::vector<Record> sorted;
  sorted.reserve(records_.capacity());
  if (descending) {
    for (size_t i = count; i-- > 0;) sorted.push_back(std::move(records_[order[i]]));
  } else {
    for (size_t i = 0; i < count; ++i) sorted.push_back(std::move(records_[order[i]]));
  }
  records_.swap(sorted);
}

}  // namespace qm
