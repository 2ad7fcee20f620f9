#include "table/record.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/errors.h"
#include "table/record_arena.h"

namespace qm {
namespace {

std::vector<std::u16string> Cells(const Record& r) {
  std::vector<std::u16string> out;
  for (int32_t k = 0; k < r.Count(); ++k) out.emplace_back(r.Cell(k));
  return out;
}

using V = std::vector<std::u16string>;

TEST(Record, CellOperationsKeepTheOtherCellsAndRefuseBadIndexes) {
  const std::u16string_view init[] = {u"a", u"", u"ccc"};
  Record r(init);
  r.Set(1, u"bb");
  r.Insert(0, u"z");
  r.Append(u"end");
  EXPECT_EQ(Cells(r), (V{u"z", u"a", u"bb", u"ccc", u"end"}));
  r.Move(0, 4);
  EXPECT_EQ(Cells(r), (V{u"a", u"bb", u"ccc", u"end", u"z"}));
  r.Move(4, 0);
  r.Delete(2);
  EXPECT_EQ(Cells(r), (V{u"z", u"a", u"ccc", u"end"}));
  r.PadTo(6);
  EXPECT_EQ(Cells(r), (V{u"z", u"a", u"ccc", u"end", u"", u""}));
  EXPECT_THROW(r.At(6), EListError);
  EXPECT_THROW(r.Set(-1, u"x"), EListError);
  EXPECT_THROW(r.Insert(7, u"x"), EListError);
  EXPECT_THROW(r.Move(0, 6), EListError);
  EXPECT_EQ(r.Count(), 6);  // nothing changed by a refused call
  try {
    r.At(9);
  } catch (const EListError& e) {
    EXPECT_EQ(e.Message(), u"List index out of bounds (9)");
  }
  for (int i = 0; i < 6; ++i) r.Delete(0);
  EXPECT_EQ(r.Count(), 0);
}

TEST(Record, ArenaRecordsMoveToTheHeapWhenChangedOrCopied) {
  std::vector<Record> kept;
  {
    RecordArena arena;
    const uint32_t ends[] = {1, 3, 3};
    Record a = Record::InArena(arena, u"abc", ends);
    Record b = Record::InArena(arena, u"abc", ends);
    Record c = Record::InArena(arena, u"abc", ends);
    EXPECT_EQ(Cells(a), (V{u"a", u"bc", u""}));
    kept.push_back(a);  // a copy owns its own block
    b.Set(2, u"changed");
    kept.push_back(std::move(b));  // changed: already on the heap
    c.PadTo(4);
    kept.push_back(std::move(c));
    Record d = Record::InArena(arena, u"", std::span<const uint32_t>());
    EXPECT_EQ(d.Count(), 0);
    a = Record::InArena(arena, u"xy", ends);  // assigning over an arena block frees nothing
  }                                           // the records in the arena go first, then the arena
  // Used after the arena is gone: only valid if they left it.
  EXPECT_EQ(Cells(kept[0]), (V{u"a", u"bc", u""}));
  EXPECT_EQ(Cells(kept[1]), (V{u"a", u"bc", u"changed"}));
  EXPECT_EQ(Cells(kept[2]), (V{u"a", u"bc", u"", u""}));
}

TEST(Record, RewoundArenaRefillsItsChunksAndGivesBackTheRest) {
  RecordArena arena;
  void* first = arena.Allocate(16);
  for (int i = 0; i < 20000; ++i) arena.Allocate(100);  // several chunks
  arena.Rewind();
  EXPECT_EQ(arena.Allocate(16), first);  // the same memory again
  const uint32_t ends[] = {2, 4};
  Record kept = Record::InArena(arena, u"abcd", ends);
  arena.ReleaseUnused();  // the chunks after the first go; the first stays
  EXPECT_EQ(kept.Cell(1), u"cd");
  Record more = Record::InArena(arena, u"wxyz", ends);  // the arena still serves
  EXPECT_EQ(more.Cell(0), u"wx");
}

TEST(Record, KeepsOneByteTextWhileEveryCharacterFitsAndLongTextWithWideEnds) {
  const std::u16string_view init[] = {u"caf\u00E9", u"", u"\u00FF"};
  Record r(init);
  EXPECT_TRUE(r.IsNarrow());
  r.Set(1, u"\u0141\u00F3d\u017A");  // a character above U+00FF: the record goes to UTF-16
  EXPECT_FALSE(r.IsNarrow());
  r.Move(1, 2);
  r.Insert(0, u"x");
  EXPECT_EQ(Cells(r), (V{u"x", u"caf\u00E9", u"\u00FF", u"\u0141\u00F3d\u017A"}));
  Record copy(r);
  r.Delete(3);  // the last such character gone: one byte a character again
  EXPECT_TRUE(r.IsNarrow());
  EXPECT_FALSE(copy.IsNarrow());
  EXPECT_EQ(Cells(r), (V{u"x", u"caf\u00E9", u"\u00FF"}));
  EXPECT_EQ(Cells(copy), (V{u"x", u"caf\u00E9", u"\u00FF", u"\u0141\u00F3d\u017A"}));

  // Cell ends on both sides of 256 and of 64 Ki characters, in both kinds
  // of text, as records grow and shrink across them.
  for (const uint32_t limit : {256u, 65536u}) {
    for (const char16_t fill : {u'a', u'\u0416'}) {
      const std::u16string big(limit - 2, fill);
      const std::u16string_view cells[] = {big, u"b"};
      Record grown(cells);
      EXPECT_EQ(grown.IsNarrow(), fill == u'a');
      grown.Append(u"c");  // `limit` characters
      grown.Append(u"d");
      EXPECT_EQ(Cells(grown), (V{big, u"b", u"c", u"d"}));
      grown.PadTo(5);
      grown.Delete(3);
      grown.Delete(0);
      EXPECT_EQ(Cells(grown), (V{u"b", u"c", u""}));
      RecordArena arena;
      const uint32_t ends[] = {limit - 2, limit - 1, limit};
      const std::u16string text = big + u"bc";
      EXPECT_EQ(Cells(Record::InArena(arena, text, ends)), (V{big, u"b", u"c"}));
      EXPECT_EQ(Cells(Record::InArena(arena, text, std::span(ends, 2))), (V{big, u"b"}));
    }
  }
}

}  // namespace
}  // namespace qm
