#include <gtest/gtest.h>

#include "boundary/param_parser.h"
#include "core/messages.h"
#include "dialogs/format_frame.h"
#include "dialogs/source_frame.h"
#include "dialogs/target_frame.h"

namespace qm {
namespace {

template <class Frame>
std::u16string Saved(const Frame& frame) {
  TQMParamParser block;
  frame.Save(block);
  return block.Text();
}

template <class Frame>
Frame Loaded(std::u16string_view text, Frame frame = Frame()) {
  frame.Load(TQMParamParser(text));
  return frame;
}

TEST(FormatFrame, LoadsWithTheEditorsFallbacksAndSavesEveryKey) {
  struct Case {
    std::u16string_view block, saved;
  };
  const Case cases[] = {
      {u"", u"delimiter=2\r\nquotechar=0\r\nstrictdelimiter=1\r\n"},
      {u"delimiter=9\r\nquotechar=7\r\nstrictdelimiter=0\r\n", u"delimiter=2\r\nquotechar=0\r\nstrictdelimiter=0\r\n"},
      {u"delimiter=-1\r\nquotechar=-1\r\n", u"delimiter=2\r\nquotechar=0\r\nstrictdelimiter=1\r\n"},
      // A block the editor wrote comes back byte for byte.
      {u"delimiter=4\r\notherchar=|x\r\nquotechar=2\r\nstrictdelimiter=0\r\n",
       u"delimiter=4\r\notherchar=|x\r\nquotechar=2\r\nstrictdelimiter=0\r\n"},
  };
  for (size_t i = 0; i < std::size(cases); ++i) {
    EXPECT_EQ(Saved(Loaded<FormatFrame>(cases[i].block)), cases[i].saved) << "case " << i;
  }
}

TEST(FormatFrame, CustomCharacterFieldFollowsTheListButNotTheResets) {
  FormatFrame f = Loaded<FormatFrame>(u"delimiter=4\r\n");
  EXPECT_TRUE(f.IsEnabled(FormatControl::OtherChar));
  EXPECT_TRUE(f.IsEnabled(FormatControl::OtherCharLabel));
  f.ResetToExcel();
  EXPECT_TRUE(f.IsEnabled(FormatControl::OtherChar));  // kept until the list is clicked
  EXPECT_EQ(Saved(f), u"delimiter=2\r\nquotechar=0\r\nstrictdelimiter=1\r\n");
  f.SelectDelimiter(DelimiterChoice::Comma);
  EXPECT_FALSE(f.IsEnabled(FormatControl::OtherChar));
  f.ResetToStandard();
  EXPECT_EQ(Saved(f), u"delimiter=0\r\nquotechar=0\r\nstrictdelimiter=0\r\n");
  EXPECT_FALSE(Loaded<FormatFrame>(u"").IsEnabled(FormatControl::OtherChar));
  EXPECT_TRUE(f.IsEnabled(FormatControl::Delimiter));
}

TEST(SourceFrame, LoadsWithTheEditorsFallbacksAndSavesEveryKey) {
  struct Case {
    bool openMode;
    std::u16string_view block, saved;
  };
  const std::u16string_view rest =
      u"encoding=0\r\nskipfirst=0\r\nskipempty=1\r\nskipcomments=0\r\ncommentchars=#\r\n"
      u"headerline=0\r\nlinecount=0\r\n";
  const std::u16string full0 = u"source=0\r\n" + std::u16string(rest);
  const std::u16string open1 = u"source=1\r\n" + std::u16string(rest);
  const std::u16string written =
      u"source=1\r\nfilename={dir}a b.csv\r\nencoding=5\r\nskipfirst=100\r\nskipempty=0\r\nskipcomments=1\r\n"
      u"commentchars=//\r\nheaderline=1\r\nlinecount=0\r\n";
  const std::u16string text =
      u"source=2\r\nencoding=0\r\nskipfirst=3\r\nskipempty=1\r\nskipcomments=0\r\n"
      u"commentchars=;\r\nheaderline=0\r\nlinecount=4\r\nline00000000=a;b\r\n"
      u"line00000002=c;d\r\nline00000003=  \r\n";
  const Case cases[] = {
      {false, u"", full0},
      {false, u"source=7\r\n", full0},
      {true, u"source=0\r\n", open1},  // open mode has no previous action: "File"
      {false, u"encoding=6\r\nskipfirst=-4\r\n", full0},
      {false, u"skipcomments=1\r\ncommentchars=  \r\n", full0},  // blank comment text: "#", skipping off
      {true, written, written},
      {true, text, text},
      {false, u"skipfirst=250\r\n",  // held to the spinner's range
       u"source=0\r\nencoding=0\r\nskipfirst=100\r\nskipempty=1\r\nskipcomments=0\r\ncommentchars=#\r\n"
       u"headerline=0\r\nlinecount=0\r\n"},
  };
  for (size_t i = 0; i < std::size(cases); ++i) {
    EXPECT_EQ(Saved(Loaded(cases[i].block, SourceFrame(cases[i].openMode))), cases[i].saved) << "case " << i;
  }
}

TEST(SourceFrame, TextHoldsTheStoredLinesAndSavesThemCut) {
  SourceFrame f = Loaded<SourceFrame>(u"linecount=3\r\nline00000000=a;b\r\nline00000002=c;d\r\nline00000003=x\r\n");
  EXPECT_EQ(f.text, u"a;b\r\n\r\nc;d\r\n");
  f.text = u"1\r2\n\n3";  // any line break cuts
  TQMParamParser block;
  f.Save(block);
  EXPECT_EQ(block.GetInteger(u"linecount"), 4);
  EXPECT_EQ(block.GetString(u"line00000001"), u"2");
  EXPECT_FALSE(block.ParamExist(u"line00000002"));
  EXPECT_EQ(block.GetString(u"line00000003"), u"3");
}

TEST(SourceFrame, FileAndTextMustNotBeBlank) {
  struct Case {
    CsvSource source;
    std::u16string_view fileName, text;
    std::optional<SourceControl> fault;
  };
  const Case cases[] = {
      {CsvSource::PreviousAction, u"", u"", std::nullopt},
      {CsvSource::Text, u"x.csv", u"\r\n \r\n", SourceControl::Text},
      {CsvSource::Text, u"", u" a", std::nullopt},
  };
  for (const auto& c : cases) {
    SourceFrame f;
    f.source = c.source;
    f.fileName = c.fileName;
    f.text = c.text;
    const auto failure = f.Check();
    ASSERT_EQ(failure.has_value(), c.fault.has_value());
    if (failure) {
      EXPECT_EQ(failure->control, *c.fault);
      EXPECT_EQ(failure->message, msg::kValueEmpty);
    }
  }
}

TEST(TargetFrame, KeysCheckAndProducedVariable) {
  EXPECT_EQ(Saved(Loaded<TargetFrame>(u"targetencoding=9\r\n")),
            u"savetovariable=0\r\nsavetofile=0\r\ntargetencoding=0\r\nnotchangeformat=1\r\n");
  const std::u16string_view written =
      u"savetovariable=1\r\nsavevariable= Out \r\nsavetofile=1\r\n"
      u"targetfilename={dir}\\o.csv\r\ntargetencoding=3\r\nnotchangeformat=0\r\n";
  TargetFrame t = Loaded<TargetFrame>(written);
  EXPECT_EQ(Saved(t), written);
  EXPECT_EQ(t.ProducedVariable(), u" Out ");

  t = TargetFrame();
  EXPECT_FALSE(t.Check());  // no target is allowed
  EXPECT_TRUE(t.ProducedVariable().empty());
  t.saveToVariable = t.saveToFile = true;
  t.fileName = u"  ";
  ASSERT_TRUE(t.Check());
  EXPECT_EQ(t.Check()->control, TargetControl::VariableName);  // the variable is checked first
  t.variableName = u"v";
  ASSERT_TRUE(t.Check());
  EXPECT_EQ(t.Check()->control, TargetControl::FileName);
  EXPECT_EQ(t.Check()->message, msg::kValueEmpty);
}

}  // namespace
}  // namespace qm
