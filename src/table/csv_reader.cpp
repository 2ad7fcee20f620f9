#include "table/csv_reader.h"

#include <algorithm>
#include <string>

#include "core/errors.h"
#include "core/messages.h"

namespace qm {

namespace {

[[noreturn]] void RaiseTextEmpty() { throw QmError(msg::kTextEmpty); }

}  // namespace

void ReadCsv(CsvLineSource& source, const CsvReadRules& read, TMemoryStrDataStorage& storage) {
  // The old records' memory holds the new ones; whatever the load leaves
  // unused, also after a failure, goes back when it ends.
  storage.ClearForReload();
  struct ReleaseUnused {
    TMemoryStrDataStorage& storage;
    ~ReleaseUnused() { storage.ReleaseUnusedMemory(); }
  } releaseUnused{storage};
  std::u16string_view line;
  // A negative count points before the first line: the line list's own
  // index error, as for any other bad index.
  if (read.skipFirst < 0) {
    if (!source.Next(line)) RaiseTextEmpty();
    RaiseListIndexError(read.skipFirst);
  }
  for (int32_t k = 0; k < read.skipFirst; ++k) {
    if (!source.Next(line)) RaiseTextEmpty();
  }
  SkipRules rules;
  rules.blank = read.skipEmpty;
  if (read.skipComments) rules.comment = read.commentChars;
  // The first data line is split as the records are, straight from a file's
  // bytes where it can be.
  LineSplitter splitter(read.format);
  bool skipped = false;
  size_t fieldCount = 0;
  do {
    if (!source.NextData(rules, splitter, 0, skipped, fieldCount)) RaiseTextEmpty();
  } while (skipped);
  if (read.headerLine) {
    storage.TakeFieldNames(splitter.MakeHeapRecord(fieldCount));
  } else {
    storage.MakeUpFieldNames(static_cast<int32_t>(fieldCount));
  }
  const size_t hint = source.LineCountHint();
  storage.SetCapacity(static_cast<int32_t>(std::min<size_t>(hint, 0x7FFFFFFF)));
  // Without a header the first data line is also the first record.
  if (!read.headerLine) storage.AppendRecord(splitter.MakeRecord(fieldCount, fieldCount, storage.Arena()));
  size_t count = 0;
  while (source.NextData(rules, splitter, fieldCount, skipped, count)) {
    if (!skipped) storage.AppendRecord(splitter.MakeRecord(count, fieldCount, storage.Arena()));
  }
}

}  // namespace qm
