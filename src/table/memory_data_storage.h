// The in-memory table: ordered field names and ordered records of text cells,
// all counted from 0. The storage checks no index itself: an index outside a
// list raises that list's out-of-bounds error (EListError) with the index, and
// an operation that fails half way keeps what it had already done.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "table/field_name_list.h"
#include "table/record.h"
#include "table/record_arena.h"

namespace qm {

enum class ColumnFill : int32_t { Empty = 0, RowNumber = 1, Value = 2 };

class TMemoryStrDataStorage {
 public:
  TMemoryStrDataStorage() = default;
  TMemoryStrDataStorage(const TMemoryStrDataStorage&) = delete;
  TMemoryStrDataStorage& operator=(const TMemoryStrDataStorage&) = delete;
  ~TMemoryStrDataStorage() { ClearData(); }

  int32_t FieldCount() const noexcept { return fields_.Count(); }
  int32_t RecordCount() const noexcept { return static_cast<int32_t>(records_.size()); }

  // Pads the record with empty cells to FieldCount (a longer one keeps all
  // its cells) and appends it.
  void AddRecord(Record record);
  // Appends the other storage's records, each padded as AddRecord pads,
  // moved with their memory: the other storage keeps its field names and
  // no record. When memory runs out, no record has moved.
  void TakeRecords(TMemoryStrDataStorage& other);
  // Appends a record without padding; the loader pads while it splits.
  void AppendRecord(Record&& record) { records_.push_back(std::move(record)); }
  // Memory for loaded records, released by ClearData.
  RecordArena& Arena() noexcept { return arena_; }
  // ClearData for a load that follows at once: the records' memory is kept
  // for the new records; ReleaseUnusedMemory() afterwards gives back the rest.
  void ClearForReload() noexcept;
  void ReleaseUnusedMemory() noexcept { arena_.ReleaseUnused(); }
  // Frees every record and forgets every field name.
  void ClearData() noexcept;
  void DeleteRecord(int32_t row);

  CellText GetCellValue(int32_t row, int32_t column) const;
  // Replaces an existing cell; no cell is created.
  void SetCellValue(int32_t row, int32_t column, CellText text);
  // The stored record itself; valid until records are added or removed.
  Record& GetDataRecord(int32_t row);
  const Record& GetDataRecord(int32_t row) const;

  std::u16string GetFieldName(int32_t column) const;
  void SetFieldsname(int32_t column, std::u16string_view name);
  // Field names without touching the records (the loader's): appended, the
  // cells of a header line, or `count` made-up ones ("field0", ...) in place
  // of any before.
  void AppendFieldName(std::u16string_view name) { fields_.Insert(fields_.Count(), name); }
  void TakeFieldNames(Record&& names) noexcept { fields_.Take(std::move(names)); }
  void MakeUpFieldNames(int32_t count) noexcept { fields_.MakeUp(count); }
  // Every field name, as a list and as one record.
  std::vector<std::u16string> FieldNames() const;
  Record FieldNameRecord() const { return fields_.AsRecord(); }
  const std::vector<Record>& Records() const noexcept { return records_; }

  // Pre-sizes the record list; no record is created.
  void SetCapacity(int32_t count);

  // A position above FieldCount or below 0 appends; FieldCount itself is a
  // valid insert at the end. Each record gets its cell at the same position.
  void InsertColumn(int32_t position, ColumnFill fill, std::u16string_view name, std::u16string_view value);
  // Takes the item out at `from` and inserts it at `to` of the shortened
  // list: the field names first, then each record in order.
  void MoveColumn(int32_t from, int32_t to);
  // Deletes the field name, then the cell in every record.
  void RemoveColumn(int32_t column);
  // Adds empty unnamed columns at the end (each record gets its empty cells
  // after its last one) or removes the last columns (the cells at their
  // positions), in one pass over the records. Every record must hold at least
  // FieldCount() cells, as loaded and added records do.
  void SetFieldCount(int32_t count);
  // Reorders the records by the cell at `column`. Not stable; descending is
  // the exact reverse of the ascending order.
  void SortByField(int32_t column, bool caseSensitive, bool descending, bool numeric);

 private:
  void CheckRow(int32_t row) const;
  // Replaces every record, in order, by make(arena, record, row): the new
  // record, built in a new generation of the table's arena. The memory of the
  // old records then goes back: the column steps change every record, and so
  // the records stay together in memory and the old ones cost nothing after
  // the step. Should make fail, the records made so far are kept.
  template <typename Make>
  void RebuildRecords(Make&& make);

  FieldNameList fields_;
  RecordArena arena_;  // declared before the records, which it outlives
  std::vector<Record> records_;
};

}  // namespace qm
