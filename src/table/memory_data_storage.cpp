#include "table/memory_data_storage.h"

#include <algorithm>

#include "core/convert.h"
#include "core/errors.h"
#include "table/fetched_records.h"
#include "table/raw_buffer.h"
#include "table/sort_keys.h"

namespace qm {

template <typename Make>
void TMemoryStrDataStorage::RebuildRecords(Make&& make) {
  const RecordArena::Generation before = arena_.StartGeneration();
  ForEachFetched(records_, [&](Record& record, size_t row) { record = make(arena_, record, row); });
  arena_.ReleaseOlder(before);
}

void TMemoryStrDataStorage::CheckRow(int32_t row) const {
  if (row < 0 || row >= RecordCount()) RaiseListIndexError(row);
}

void TMemoryStrDataStorage::AddRecord(Record record) {
  record.PadTo(FieldCount());
  records_.push_back(std::move(record));
}

void TMemoryStrDataStorage::TakeRecords(TMemoryStrDataStorage& other) {
  for (Record& record : other.records_) record.PadTo(FieldCount());
  records_.reserve(records_.size() + other.records_.size());
  arena_.TakeOver(other.arena_);
  for (Record& record : other.records_) records_.push_back(std::move(record));
  other.records_.clear();
}

void TMemoryStrDataStorage::ClearData() noexcept {
  records_.clear();
  records_.shrink_to_fit();
  arena_.Clear();  // after the records that used it
  fields_.Clear();
}

void TMemoryStrDataStorage::ClearForReload() noexcept {
  records_.clear();
  records_.shrink_to_fit();
  arena_.Rewind();  // after the records that used it
  fields_.Clear();
}

void TMemoryStrDataStorage::DeleteRecord(int32_t row) {
  CheckRow(row);
  records_.erase(records_.begin() + row);
}

CellText TMemoryStrDataStorage::GetCellValue(int32_t row, int32_t column) const {
  return GetDataRecord(row).At(column);
}

void TMemoryStrDataStorage::SetCellValue(int32_t row, int32_t column, CellText text) {
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

std::u16string TMemoryStrDataStorage::GetFieldName(int32_t column) const {
  if (column < 0 || column >= FieldCount()) RaiseListIndexError(column);
  return fields_.Name(column);
}

std::vector<std::u16string> TMemoryStrDataStorage::FieldNames() const {
  std::vector<std::u16string> names;
  for (int32_t k = 0; k < FieldCount(); ++k) names.push_back(fields_.Name(k));
  return names;
}

void TMemoryStrDataStorage::SetFieldsname(int32_t column, std::u16string_view name) {
  if (column < 0 || column >= FieldCount()) RaiseListIndexError(column);
  fields_.Set(column, name);
}

void TMemoryStrDataStorage::SetCapacity(int32_t count) {
  if (count > 0) records_.reserve(static_cast<size_t>(count));
}

void TMemoryStrDataStorage::InsertColumn(int32_t position, ColumnFill fill, std::u16string_view name,
                                         std::u16string_view value) {
  if (position > FieldCount()) position = -1;
  fields_.Insert(position < 0 ? FieldCount() : position, name);
  std::u16string number;
  RebuildRecords([&](RecordArena& arena, const Record& record, size_t row) {
    CellText text;
    if (fill == ColumnFill::RowNumber) {
      number = IntToStr(static_cast<int64_t>(row) + 1);
      text = number;
    } else if (fill == ColumnFill::Value) {
      text = value;
    }
    return record.InsertedInto(arena, position < 0 ? record.Count() : position, text);
  });
}

void TMemoryStrDataStorage::MoveColumn(int32_t from, int32_t to) {
  if (from == to) return;
  const int32_t count = FieldCount();
  if (from < 0 || from >= count) RaiseListIndexError(from);
  if (to < 0 || to >= count) RaiseListIndexError(to);
  fields_.Move(from, to);
  RebuildRecords([&](RecordArena& arena, const Record& record, size_t) { return record.MovedInto(arena, from, to); });
}

void TMemoryStrDataStorage::RemoveColumn(int32_t column) {
  if (column < 0 || column >= FieldCount()) RaiseListIndexError(column);
  fields_.Remove(column);
  RebuildRecords([&](RecordArena& arena, const Record& record, size_t) { return record.DeletedInto(arena, column); });
}

void TMemoryStrDataStorage::SetFieldCount(int32_t count) {
  const int32_t have = FieldCount();
  if (count < 0 || count == have) return;
  fields_.Resize(count);
  std::vector<CellText> kept;
  RebuildRecords([&](RecordArena& arena, const Record& record, size_t) {
    const Record::Cells cells = record.AllCells();
    kept.clear();
    for (int32_t k = 0; k < cells.Count(); ++k) {
      if (k < count || k >= have) kept.push_back(cells[k]);
    }
    kept.resize(kept.size() + static_cast<size_t>(std::max(count - have, 0)));
    return Record::InArena(arena, kept);
  });
}

void TMemoryStrDataStorage::SortByField(int32_t column, bool caseSensitive, bool descending, bool numeric) {
  const size_t count = records_.size();
  // The order is a large block, as the keys are (sort_keys.cpp).
  RawBuffer<uint32_t> orderMemory;
  uint32_t* order = orderMemory.Reserve(count);
  if (numeric) {
    NumberOrder(records_, column, order);
  } else {
    TextOrder(records_, column, caseSensitive, order);
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
