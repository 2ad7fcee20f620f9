// Walks over every record of a table, each fetched from memory a few
// records ahead of its turn: after a sort the records' blocks lie in no
// order in memory, and without this each record would wait on memory.
#pragma once

#include <cstddef>
#include <cstdint>

#include "table/record.h"

namespace qm {

// How many records ahead of its turn a record is fetched.
inline constexpr size_t kFetchAhead = 16;

// Calls f(record, index) for every record of `records` (a vector of Record,
// const or not), in order.
template <typename Records, typename F>
void ForEachFetched(Records& records, F&& f) {
  const size_t count = records.size();
  for (size_t i = 0; i < count; ++i) {
    if (i + kFetchAhead < count) records[i + kFetchAhead].Prefetch();
    f(records[i], i);
  }
}

}  // namespace qm
