#include "table/field_name_list.h"

#include <span>
#include <vector>

#include "core/convert.h"

namespace qm {

namespace {

std::u16string MadeUpName(int32_t column) { return u"field" + IntToStr(column); }

// The first `count` cells of `record`.
Record Head(const Record& record, int32_t count) {
  const Record::Cells cells = record.AllCells();
  std::vector<uint32_t> ends(static_cast<size_t>(count));
  for (int32_t k = 0; k < count; ++k) ends[static_cast<size_t>(k)] = cells.End(k);
  return Record(cells.All().Sub(0, count ? ends.back() : 0), ends);
}

}  // namespace

std::u16string FieldNameList::Name(int32_t column) const {
  return column < made_ ? MadeUpName(column) : named_.Cell(column - made_).ToString();
}

Record FieldNameList::AsRecord() const {
  if (made_ == 0) return named_;
  std::u16string text;
  std::vector<uint32_t> ends;
  ends.reserve(static_cast<size_t>(Count()));
  for (int32_t k = 0; k < made_; ++k) {
    text += MadeUpName(k);
    ends.push_back(static_cast<uint32_t>(text.size()));
  }
  const Record::Cells cells = named_.AllCells();
  for (int32_t k = 0; k < cells.Count(); ++k) {
    cells[k].AppendTo(text);
    ends.push_back(static_cast<uint32_t>(text.size()));
  }
  return Record(text, ends);
}

void FieldNameList::Clear() noexcept {
  made_ = 0;
  named_ = Record();
}

void FieldNameList::MakeUp(int32_t count) noexcept {
  Clear();
  made_ = count;
}

void FieldNameList::Take(Record&& names) noexcept {
  made_ = 0;
  named_ = std::move(names);
}

void FieldNameList::Store() {
  if (made_ == 0) return;
  Record all = AsRecord();
  made_ = 0;
  named_ = std::move(all);
}

void FieldNameList::Set(int32_t column, std::u16string_view name) {
  if (column < made_) Store();
  named_.Set(column - made_, name);
}

void FieldNameList::Insert(int32_t position, std::u16string_view name) {
  if (position < made_) Store();
  named_.Insert(position - made_, name);
}

void FieldNameList::Move(int32_t from, int32_t to) {
  if (from < made_ || to < made_) Store();
  named_.Move(from - made_, to - made_);
}

void FieldNameList::Remove(int32_t column) {
  if (column == made_ - 1 && named_.Count() == 0) {
    --made_;  // the last made-up name, last in the list
    return;
  }
  if (column < made_) Store();
  named_.Delete(column - made_);
}

void FieldNameList::Resize(int32_t count) {
  if (count >= Count()) {
    named_.PadTo(count - made_);
  } else if (count <= made_) {
    MakeUp(count);
  } else {
    named_ = Head(named_, count - made_);
  }
}

}  // namespace qm
