// CSV Data Loop through the catalogue's entry points, for what a task file
// cannot show: JSON escaping of every kind of unit, and the job-stop release
// of a loop for index 11 only (the golden transcripts cover the passes).
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "host_memory.h"
#include "loop/data_loop.h"
#include "fake_task.h"
#include "table/record.h"

namespace qm {
namespace {

using test::FakeTask;

constexpr int32_t kDataLoop = 10;
constexpr int32_t kRemoveDuplicates = 11;
constexpr int32_t kReadCells = 6;

std::u16string Block(std::initializer_list<std::u16string_view> lines) {
  std::u16string block;
  for (auto line : lines) {
    block += line;
    block += u"\r\n";
  }
  return block;
}

std::u16string Slot(int32_t step) {
  std::u16string hex = u"0000";
  for (int i = 3, v = step; i >= 0; --i, v >>= 4) hex[static_cast<size_t>(i)] = u"0123456789ABCDEF"[v & 15];
  return u"00000001_" + hex + u"_$CSVLOOP$";
}

class DataLoopTest : public testing::Test {
 protected:
  void TearDown() override {
    // Job stop of any action frees the table; index 11 at each loop step frees
    // whatever loop a test left behind.
    for (int32_t step = 0; step < static_cast<int32_t>(task.stepTypes.size()); ++step) {
      task.JobStop(kRemoveDuplicates, step);
    }
    EXPECT_EQ(task.References(), 0);
    EXPECT_EQ(qmhost::OutstandingStepItems(), 0);
    EXPECT_EQ(qmhost::Memory().Errors(), std::vector<std::string>{});
  }

  FakeTask task{{atSimple, atBeginLoop, atSimple, atEndLoop, atSimple}};
};

TEST(DataLoopJson, EscapesWhatJsonRequiresAndKeepsTheRest) {
  struct Case {
    std::vector<std::u16string_view> cells;
    std::u16string json;
  };
  const Case cases[] = {
      {{}, u"[]"},
      {{std::u16string_view(u"\x01\x1F\x7F", 3)}, u"[\"\\u0001\\u001f\x7F\"]"},
      {{u"caf\xE9", u"\"q\"\\", u""}, u"[\"caf\xE9\",\"\\\"q\\\"\\\\\",\"\"]"},  // kept one byte a character
      {{u"\U0001F600"}, u"[\"\U0001F600\"]"},                                    // a surrogate pair stays as it is
      {{std::u16string_view(u"a\xD800"
                            "b",
                            3)},
       u"[\"a\\ud800b\"]"},
      {{std::u16string_view(u"\xDBFF\xDBFF\xDFFF", 3)}, u"[\"\\udbff\xDBFF\xDFFF\"]"},
  };
  std::u16string scratch;
  for (const Case& c : cases) {
    std::u16string out = u"prefix:";
    AppendRowAsJson(Record(c.cells), out, scratch);
    EXPECT_EQ(out, u"prefix:" + c.json);
  }
}

TEST_F(DataLoopTest, JobStopReleasesASavedLoopOnlyForIndexElevenAtItsOwnStep) {
  const std::u16string block = Block({u"source=2", u"linecount=2", u"line00000000=x", u"line00000001=y"});
  EXPECT_TRUE(task.Exec(kDataLoop, 1, block));
  const std::u16string saved = task.privateVariables[Slot(1)];
  ASSERT_EQ(task.References(), 1);

  task.JobStop(kDataLoop, 1);
  task.JobStop(kReadCells, 1);
  EXPECT_EQ(task.References(), 1) << "the Data Loop's own index does not release its loop";
  EXPECT_EQ(task.privateVariables[Slot(1)], saved);
  EXPECT_EQ(task.privateVariables[u"$CSV_OBJECT$"], u"0") << "but the table is gone";

  task.JobStop(kRemoveDuplicates, 2);
  EXPECT_EQ(task.References(), 1) << "another step's slot";
  EXPECT_EQ(task.privateVariables[Slot(2)], u"0");
  EXPECT_EQ(task.privateVariables[Slot(1)], saved);

  task.JobStop(kRemoveDuplicates, 1);
  EXPECT_EQ(task.References(), 0);
  EXPECT_EQ(task.privateVariables[Slot(1)], u"0");
}

}  // namespace
}  // namespace qm
