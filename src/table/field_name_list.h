// A table's field names. A table loaded without a header line has made-up
// names "field0", "field1", ...: they are worked out when asked for and
// stored only once a change among them calls for it, so a line of millions
// of cells does not bring millions of names along. Names read or set are
// kept back to back in one block, as a record's cells are.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "table/record.h"

namespace qm {

class FieldNameList {
 public:
  int32_t Count() const noexcept { return made_ + named_.Count(); }
  // Indexes are not checked here: the storage checks them first.
  std::u16string Name(int32_t column) const;
  // All the names, the made-up ones included, as one record.
  Record AsRecord() const;

  void Clear() noexcept;
  // Replaces the list with `count` made-up names.
  void MakeUp(int32_t count) noexcept;
  // Replaces the list with the cells of `names`.
  void Take(Record&& names) noexcept;

  void Set(int32_t column, std::u16string_view name);
  // `position` may be Count(), the end.
  void Insert(int32_t position, std::u16string_view name);
  void Move(int32_t from, int32_t to);
  void Remove(int32_t column);
  // Cuts the list or appends empty names.
  void Resize(int32_t count);

 private:
  // Stores the made-up names, for a change among them.
  void Store();

  int32_t made_ = 0;  // the first names are made up: "field0" to "field<made_ - 1>"
  Record named_;      // the names after them
};

}  // namespace qm
