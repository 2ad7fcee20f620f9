#include "loop/record_filter.h"

#include <gtest/gtest.h>

#include <vector>

#include "core/errors.h"
#include "core/utf.h"

namespace qm {
namespace {

using Cells = std::vector<std::u16string_view>;

Record Row(const Cells& cells) { return Record(std::span<const std::u16string_view>(cells.data(), cells.size())); }
std::string Narrow(std::u16string_view text) { return Utf16ToUtf8(text); }

// What an evaluation raised, as "<kind>: <message>"; empty when nothing was.
template <typename F>
std::string Raised(F&& f) {
  try {
    f();
  } catch (const EConvertError& e) {
    return "convert: " + std::string(e.what());
  } catch (const EListError& e) {
    return "list: " + std::string(e.what());
  } catch (const ERegexError& e) {
    return "regex: " + std::string(e.what());
  }
  return {};
}

TEST(RecordFilter, StoredLinesAgainstRows) {
  struct Case {
    std::u16string_view line;
    Cells cells;
    bool passes;
  };
  const Case cases[] = {
      {u"1,abc,0,0", {u"xxABCxx"}, true},
      {u"1,abc,1,0", {u"xxABCxx"}, false},
      {u"1,ABC,1,0", {u"xxABCxx"}, true},
      {u"1,^a.c$,0,1", {u"ABC"}, true},
      {u"1,b,1,1", {u"abc"}, true},        // unanchored
      {u"2,abc", {u"x", u"zABCz"}, true},  // padded: case-insensitive substring
      {u"2,\"a,b\",1,0", {u"x", u"xa,bx"}, true},
      {u"1,\"say \"\"hi\"\"\",1,0", {u"they say \"hi\""}, true},
      {u"2,New York,0,0", {u"x", u"NEW jersey"}, true},  // a blank ends the field
      {u" 2 , abc , 1 , 0 ", {u"x", u"abc"}, true},
      {u"1,abc,yes,0", {u"ABC"}, true},  // a flag that is no integer is false
      {u"$2,abc,0,0", {u"x", u"abc"}, true},
      {u"1,ß,0,0", {u"STRASSE"}, false},  // simple folding: ß is not ss
      {u"1,cd,0,0",
       {u"ab\xD800"
        u"CD"},
       true},  // a lone surrogate in the cell
      // An empty substring passes without reading the cell, even beyond the row.
      {u"5,,0,0", {u"a"}, true},
      {u"0,,0,0", {}, true},
  };
  for (const auto& c : cases) {
    TRecordFilterList list;
    list.AddFilter(c.line);
    ASSERT_EQ(list.Count(), 1);
    EXPECT_EQ(list.CheckFilters(Row(c.cells), 6), c.passes) << Narrow(c.line);
  }
}

TEST(RecordFilter, Errors) {
  struct Case {
    std::u16string_view line;
    Cells cells;
    std::string raised;
  };
  const Case cases[] = {
      {u"", {u"a"}, "convert: '' is not a valid integer value"},
      {u"abc,x,0,0", {u"a"}, "convert: 'abc' is not a valid integer value"},
      {u"\"1 \",x", {u"a"}, "convert: '1 ' is not a valid integer value"},
      {u"3,abc,0,0", {u"a", u"b"}, "list: List index out of bounds (2)"},
      {u"3,(abc,0,1", {u"a", u"b"}, "list: List index out of bounds (2)"},  // cell before pattern
      {u"0,abc,0,0", {u"a"}, "list: List index out of bounds (-1)"},
      {u"-2147483648,x", {u"a"}, "list: List index out of bounds (2147483647)"},
      {u"5,,0,1", {u"a"}, "list: List index out of bounds (4)"},  // an empty pattern reads the cell
      {u"1,(abc,0,1", {u"abc"}, "regex: missing closing parenthesis at offset 4"},
      {u"1,(a+)+$,1,1",
       {u"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa!"},
       "regex: Condition on column 1 with regular expression \"(a+)+$\" failed on row 7: match limit exceeded"},
  };
  for (const auto& c : cases) {
    TRecordFilterList list;
    const std::string added = Raised([&] { list.AddFilter(c.line); });
    if (c.raised.starts_with("convert")) {
      EXPECT_EQ(added, c.raised);
      EXPECT_EQ(list.Count(), 0);
      continue;
    }
    ASSERT_EQ(added, "") << Narrow(c.line);
    EXPECT_EQ(Raised([&] { list.CheckFilters(Row(c.cells), 6); }), c.raised) << Narrow(c.line);
    // The condition stays as it was: the next row raises alike.
    EXPECT_EQ(Raised([&] { list.CheckFilters(Row(c.cells), 6); }), c.raised) << Narrow(c.line);
  }
}

TEST(RecordFilterList, CombinationAndEarlyStop) {
  struct Case {
    std::vector<std::u16string_view> lines;
    bool orMode;
    std::u16string_view cell;
    std::string result;  // "pass", "fail" or what was raised
  };
  const Case cases[] = {
      {{}, false, u"apple", "pass"},
      {{u"1,an,0,0"}, false, u"apple", "fail"},
      {{u"1,a,0,0", u"1,e,0,0"}, true, u"cherry", "pass"},
      {{u"1,a,0,0", u"1,e,0,0"}, false, u"cherry", "fail"},
      {{u"1,x,0,0", u"1,y,0,0"}, true, u"apple", "fail"},
      // The second condition's column is beyond the row: it raises only when
      // the first does not decide, and a malformed pattern likewise.
      {{u"1,yes,1,0", u"9,x,0,0"}, false, u"no", "fail"},
      {{u"1,yes,1,0", u"9,x,0,0"}, false, u"yes", "list: List index out of bounds (8)"},
      {{u"1,yes,1,0", u"9,x,0,0"}, true, u"yes", "pass"},
      {{u"1,yes,1,0", u"9,x,0,0"}, true, u"no", "list: List index out of bounds (8)"},
      {{u"1,yes,1,0", u"1,(,0,1"}, false, u"no", "fail"},
  };
  for (const auto& c : cases) {
    TRecordFilterList list;
    list.SetOrFilterMode(c.orMode);
    for (auto line : c.lines) list.AddFilter(line);
    bool passes = false;
    std::string result = Raised([&] { passes = list.CheckFilters(Row({c.cell}), 0); });
    if (result.empty()) result = passes ? "pass" : "fail";
    EXPECT_EQ(result, c.result) << c.lines.size() << " conditions, or " << c.orMode << ", " << Narrow(c.cell);
  }
}

}  // namespace
}  // namespace qm
