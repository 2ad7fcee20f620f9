// CSV Data Loop run through the catalogue's entry points, pass by pass, with
// what the host sees: variables, errors, the next step, the step's slot and
// the references the plug-in keeps; and the job-stop release of a loop.
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "core/errors.h"
#include "loop/data_loop.h"
#include "test_host.h"
#include "table/record.h"

namespace qm {
namespace {

using test::FakeTask;
using test::Host;

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

// A fresh task each time; the host's records are cleared.
class DataLoopTest : public testing::Test {
 protected:
  void SetUp() override {
    Host().events.clear();
    Host().variables.clear();
  }
  void TearDown() override {
    // Job stop of any action frees the table; index 11 at each loop step frees
    // whatever loop a test left behind.
    for (int32_t step = 0; step < static_cast<int32_t>(task.stepTypes.size()); ++step) {
      task.JobStop(kRemoveDuplicates, step);
    }
    EXPECT_EQ(task.References(), 0);
    EXPECT_EQ(task.itemsOutstanding, 0);
    EXPECT_EQ(Host().badFrees, 0);
  }
  std::vector<std::u16string> TakeEvents() {
    std::vector<std::u16string> events;
    events.swap(Host().events);
    return events;
  }

  FakeTask task{{atSimple, atBeginLoop, atSimple, atEndLoop, atSimple}};
};

using Events = std::vector<std::u16string>;

TEST_F(DataLoopTest, WritesEachRowNumberAndEndsPastTheEndLoopKeepingTheLastValues) {
  const std::u16string block =
      Block({u"source=2", u"linecount=2", u"line00000000=x", u"line00000001=y", u"rowvarname=n"});
  EXPECT_TRUE(task.Exec(kDataLoop, 1, block));
  EXPECT_EQ(TakeEvents(), (Events{u"set n=1"}));
  EXPECT_EQ(task.References(), 1) << "the saved loop holds the task";
  EXPECT_NE(task.privateVariables[Slot(1)], u"0");
  EXPECT_EQ(task.setNextStepCalls, 0);

  EXPECT_TRUE(task.Exec(kDataLoop, 1, block));
  EXPECT_EQ(TakeEvents(), (Events{u"set n=2"}));

  EXPECT_TRUE(task.Exec(kDataLoop, 1, block));
  EXPECT_EQ(TakeEvents(), Events{}) << "the last pass writes nothing";
  EXPECT_EQ(Host().variables[u"n"], u"2");
  EXPECT_EQ(task.nextStep, 4);
  EXPECT_EQ(task.privateVariables[Slot(1)], u"0");
  EXPECT_EQ(task.References(), 0) << "the finished loop is freed";

  // The slot is empty again: the next call starts over (and reloads the text).
  EXPECT_TRUE(task.Exec(kDataLoop, 1, block));
  EXPECT_EQ(TakeEvents(), (Events{u"set n=1"}));
}

TEST_F(DataLoopTest, RowContentIsCommaTextOrJsonWhateverTheTablesDelimiter) {
  struct Case {
    std::u16string format;
    Events events;
  };
  const Case cases[] = {
      {u"Format=0",
       {u"set row=a,\"b c\",", u"set row=\"x\"\"y\",back\\slash,semi;colon", u"set row=,,", u"set row=\"1,5\",,"}},
      {u"Format=1",
       {u"set row=[\"a\",\"b c\",\"\"]", u"set row=[\"x\\\"y\",\"back\\\\slash\",\"semi;colon\"]", u"set row=[\"\",\"\",\"\"]",
        u"set row=[\"1,5\",\"\",\"\"]"}},
  };
  // Loaded rows are padded to the width of the first one.
  for (const Case& c : cases) {
    const std::u16string block = Block({u"source=2", u"linecount=4", u"line00000000=a;b c;",
                                        u"line00000001=\"x\"\"y\";back\\slash;\"semi;colon\"", u"line00000002=\"\"",
                                        u"line00000003=1,5", u"linevarname=row", c.format});
    for (int pass = 0; pass < 5; ++pass) EXPECT_TRUE(task.Exec(kDataLoop, 1, block));
    EXPECT_EQ(TakeEvents(), c.events) << std::string(c.format.begin(), c.format.end());
    EXPECT_EQ(task.References(), 0);
  }
}

TEST(DataLoopJson, EscapesWhatJsonRequiresAndKeepsTheRest) {
  struct Case {
    std::vector<std::u16string_view> cells;
    std::u16string json;
  };
  const Case cases[] = {
      {{}, u"[]"},
      {{u""}, u"[\"\"]"},
      {{u"a", u"b c", u""}, u"[\"a\",\"b c\",\"\"]"},
      {{u"\"", u"\\", u"/"}, u"[\"\\\"\",\"\\\\\",\"/\"]"},
      {{u"\b\f\n\r\t"}, u"[\"\\b\\f\\n\\r\\t\"]"},
      {{std::u16string_view(u"\x01\x1F\x7F", 3)}, u"[\"\\u0001\\u001f\x7F\"]"},
      {{u"Müller 山田 €"}, u"[\"Müller 山田 €\"]"},
      {{u"\U0001F600"}, u"[\"\U0001F600\"]"},  // a surrogate pair stays as it is
      {{std::u16string_view(u"a\xD800" "b", 3)}, u"[\"a\\ud800b\"]"},
      {{std::u16string_view(u"\xDC00\xD83D", 2)}, u"[\"\\udc00\\ud83d\"]"},
      {{std::u16string_view(u"\xDBFF\xDBFF\xDFFF", 3)}, u"[\"\\udbff\xDBFF\xDFFF\"]"},
  };
  for (const Case& c : cases) {
    std::u16string out = u"prefix:";
    AppendRowAsJson(Record(c.cells), out);
    EXPECT_EQ(out, u"prefix:" + c.json);
  }
}

TEST_F(DataLoopTest, NoTableOnTheFirstPassReportsAndSavesNothing) {
  EXPECT_FALSE(task.Exec(kDataLoop, 1, Block({u"source=0", u"rowvarname=n"})));
  EXPECT_EQ(TakeEvents(),
            (Events{u"error 1: CSV data is not defined. First you must read the CSV data from a file or from text."}));
  EXPECT_EQ(task.log,
            (Events{u"2 CSV data is not defined. First you must read the CSV data from a file or from text."}));
  EXPECT_EQ(task.privateVariables.count(Slot(1)), 0u);
  EXPECT_EQ(task.References(), 0);
}

TEST_F(DataLoopTest, BadConditionTextAbortsBeforeTheLoopIsSaved) {
  const std::u16string block = Block({u"source=2", u"linecount=1", u"line00000000=x", u"conditionscount=2",
                                      u"condition00000000=1,x,0,0", u"condition00000001=abc,x,0,0"});
  try {
    task.Exec(kDataLoop, 1, block);
    FAIL() << "no error";
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"'abc' is not a valid integer value");
  }
  EXPECT_EQ(task.privateVariables.count(Slot(1)), 0u);
  EXPECT_EQ(task.References(), 0);
  EXPECT_THROW(task.Exec(kDataLoop, 1, Block({u"source=2", u"linecount=1", u"line00000000=x", u"conditionscount=1"})),
               EConvertError)
      << "a missing condition key reads as an empty line";
  EXPECT_EQ(task.References(), 0);
}

TEST_F(DataLoopTest, ConditionVariablesAreReadOnceOutputNamesOnEveryPass) {
  Host().variables[u"word"] = u"a";
  Host().variables[u"target"] = u"first";
  const std::u16string block =
      Block({u"source=2", u"linecount=4", u"line00000000=apple", u"line00000001=kiwi", u"line00000002=banana",
             u"line00000003=cherry", u"conditionscount=1", u"condition00000000=1,{word},0,0", u"rowvarname= {target} "});
  EXPECT_TRUE(task.Exec(kDataLoop, 1, block));
  Host().variables[u"word"] = u"i";
  Host().variables[u"target"] = u"second";
  EXPECT_TRUE(task.Exec(kDataLoop, 1, block));
  EXPECT_TRUE(task.Exec(kDataLoop, 1, block));
  EXPECT_EQ(TakeEvents(), (Events{u"set first=1", u"set second=3"}));
  EXPECT_EQ(task.nextStep, 4);
}

TEST_F(DataLoopTest, WithoutVariableNamesTheLoopStillRuns) {
  const std::u16string block =
      Block({u"source=2", u"linecount=2", u"line00000000=x", u"line00000001=y", u"rowvarname=  ", u"linevarname="});
  for (int pass = 0; pass < 3; ++pass) EXPECT_TRUE(task.Exec(kDataLoop, 1, block));
  EXPECT_EQ(TakeEvents(), Events{});
  EXPECT_EQ(task.nextStep, 4);
  EXPECT_EQ(task.References(), 0);
}

TEST_F(DataLoopTest, OutOfRangeColumnFailsTheFirstPassAfterTheLoopIsSaved) {
  const std::u16string block = Block({u"source=2", u"linecount=1", u"line00000000=x", u"conditionscount=1",
                                      u"condition00000000=2,x,0,0"});
  EXPECT_THROW(task.Exec(kDataLoop, 1, block), EListError);
  EXPECT_NE(task.privateVariables[Slot(1)], u"0");
  EXPECT_EQ(task.References(), 1);
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

TEST_F(DataLoopTest, NestedLoopsKeepOneSlotEachAndEndAtTheirOwnEndLoop) {
  // 1 outer loop, 3 inner loop, 4 inner end-loop, 5 outer end-loop.
  task.stepTypes = {atSimple, atBeginLoop, atSimple, atBeginLoop, atEndLoop, atEndLoop, atSimple};
  const std::u16string outer =
      Block({u"source=2", u"linecount=2", u"line00000000=a", u"line00000001=b", u"rowvarname=i"});
  const std::u16string inner = Block({u"rowvarname=j"});
  // The host's part: end-loop steps jump back, the plug-in's next step wins.
  std::u16string trace;
  int32_t step = 1;
  for (int guard = 0; guard < 50 && step < 6; ++guard) {
    task.nextStep = -1;
    if (step == 1 || step == 3) {
      EXPECT_TRUE(task.Exec(kDataLoop, step, step == 1 ? outer : inner));
      for (const auto& e : TakeEvents()) trace += e + u" ";
      if (task.nextStep >= 0) trace += u"-> " + std::u16string(1, static_cast<char16_t>(u'0' + task.nextStep)) + u" ";
    }
    if (task.nextStep >= 0) {
      step = task.nextStep;
    } else if (step == 4) {
      step = 3;
    } else if (step == 5) {
      step = 1;
    } else {
      ++step;
    }
  }
  EXPECT_EQ(trace, u"set i=1 set j=1 set j=2 -> 5 set i=2 set j=1 set j=2 -> 5 -> 6 ");
  EXPECT_EQ(task.References(), 0);
}

}  // namespace
}  // namespace qm
