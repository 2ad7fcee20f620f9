#include <gtest/gtest.h>

#include <functional>

#include "boundary/param_parser.h"
#include "core/messages.h"
#include "dialogs/add_column_editor.h"
#include "dialogs/cells_editor.h"
#include "dialogs/data_loop_editor.h"
#include "dialogs/filter_data_editor.h"
#include "dialogs/information_editor.h"
#include "dialogs/merge_editor.h"
#include "dialogs/move_column_editor.h"
#include "dialogs/open_data_editor.h"
#include "dialogs/remove_columns_editor.h"
#include "dialogs/remove_duplicates_editor.h"
#include "dialogs/save_data_editor.h"
#include "dialogs/sort_editor.h"

namespace qm {
namespace {

// The source and format keys an empty block is saved with.
const std::u16string kSourceRest =
    u"encoding=0\r\nskipfirst=0\r\nskipempty=1\r\nskipcomments=0\r\ncommentchars=#\r\n"
    u"headerline=0\r\nlinecount=0\r\n";
const std::u16string kFormat = u"delimiter=2\r\nquotechar=0\r\nstrictdelimiter=1\r\n";
const std::u16string kPrevious = u"source=0\r\n" + kSourceRest + kFormat;
const std::u16string kFile = u"source=1\r\n" + kSourceRest + kFormat;
// Source and format keys as an editor writes them for typed text.
const std::u16string kText =
    u"source=2\r\nencoding=2\r\nskipfirst=1\r\nskipempty=0\r\nskipcomments=1\r\n"
    u"commentchars=//\r\nheaderline=1\r\nlinecount=3\r\nline00000000=a;b\r\n"
    u"line00000002={v}\r\ndelimiter=4\r\notherchar=|\r\nquotechar=2\r\nstrictdelimiter=0\r\n";

// Load, then save into a block that held other lines.
template <class Editor>
std::function<std::u16string(std::u16string_view)> Resave(std::function<Editor()> make = [] { return Editor(); }) {
  return [make](std::u16string_view text) {
    Editor editor = make();
    editor.Load(TQMParamParser(text));
    TQMParamParser block(u"stale=1\r\n_qm_variables_produced=old\r\n");
    editor.Save(block);
    return block.Text();
  };
}

TEST(Editors, SaveTheWholeBlockTheyLoaded) {
  const auto open = Resave<OpenDataEditor>();
  const auto save = Resave<SaveDataEditor>();
  const auto info = Resave<InformationEditor>();
  const auto read = Resave<CellsEditor>([] { return CellsEditor(false); });
  const auto write = Resave<CellsEditor>([] { return CellsEditor(true); });
  const auto add = Resave<AddColumnEditor>();
  const auto remove = Resave<RemoveColumnsEditor>();
  const auto move = Resave<MoveColumnEditor>();
  const auto sort = Resave<SortEditor>();
  const auto dedupe = Resave<RemoveDuplicatesEditor>();
  const auto merge = Resave<MergeEditor>();
  const auto loop = Resave<DataLoopEditor>();
  const auto filter = Resave<FilterDataEditor>();
  // Conditions with a comma and a quote in a pattern, a blank in a text, an
  // empty expression, variable references in column and expression.
  const std::u16string conditions =
      u"conditionmode=1\r\nconditionscount=4\r\ncondition00000000=2,\"^a,\"\"b\"\"$\",1,1\r\n"
      u"condition00000001=1,\"New York\",0,0\r\ncondition00000002={col},{word},0,0\r\n"
      u"condition00000003=3,,1,0\r\n";
  const std::u16string target =
      u"savetovariable=1\r\nsavevariable=Out\r\nsavetofile=1\r\ntargetfilename=o.csv\r\n"
      u"targetencoding=2\r\nnotchangeformat=0\r\n";
  struct Case {
    std::function<std::u16string(std::u16string_view)> resave;
    std::u16string block, saved;
  };
  const Case cases[] = {
      // An empty block: the defaults the dialog shows, written back.
      {open, u"", kFile},
      {save, u"", u"savetovariable=0\r\nsavetofile=0\r\ntargetencoding=0\r\nnotchangeformat=1\r\n" + kFormat},
      {info, u"", kPrevious},
      {read, u"", u"cellcount=0\r\n" + kPrevious},
      {add, u"", u"totheend=1\r\ncolumnname=New field\r\nfillmode=0\r\n" + kPrevious},
      {remove, u"", kPrevious},
      {move, u"", kPrevious},
      {sort, u"", u"sortdirection=0\r\nsortmode=0\r\ncasesensitive=0\r\n" + kPrevious},
      {dedupe, u"", u"casesensitive=0\r\n" + kPrevious},
      {merge, u"", u"ajustcolumns=0\r\n" + kFile},
      {loop, u"", u"Format=0\r\nconditionmode=0\r\nconditionscount=0\r\n" + kPrevious},
      {filter, u"", u"reversemode=0\r\nconditionmode=0\r\nconditionscount=0\r\n" + kPrevious},
      // A block the dialog wrote comes back byte for byte.
      {open, kText, kText},
      {save, target + kText.substr(kText.find(u"delimiter")) + u"_qm_variables_produced=Out\r\n", {}},
      {info,
       u"recordcountvar=rows\r\ncolcountvar= My Var\r\n" + kText + u"_qm_variables_produced=\"My Var\",rows\r\n",
       {}},
      {read,
       u"cellcount=2\r\nrow0=1\r\ncol0=2\r\nval0=b\r\nrow1={r}\r\ncol1=3\r\nval1=a\r\n" + kText +
           u"_qm_variables_produced=a,b\r\n",
       {}},
      {write, u"cellcount=2\r\nrow0=1\r\ncol0=2\r\nval0={x} y\r\nrow1=2\r\ncol1=1\r\n" + kText, {}},
      {add, u"totheend=0\r\nposition={p}\r\ncolumnname=Id\r\nfillmode=2\r\ncolumnvalue= v \r\n" + kText, {}},
      {remove, u"removecolumns=1, 3\r\n" + kText, {}},
      {move, u"frompos=1\r\ntopos={to}\r\n" + kText, {}},
      {sort, u"sortcolumn=2\r\nsortdirection=1\r\nsortmode=1\r\ncasesensitive=1\r\n" + kText, {}},
      {dedupe, u"casesensitive=1\r\nvarname=n\r\n" + kText + u"_qm_variables_produced=n\r\n", {}},
      {merge, u"ajustcolumns=1\r\n" + kText, {}},
      {loop,
       u"rowvarname= n \r\nlinevarname=row\r\nFormat=1\r\n" + conditions + kText + u"_qm_variables_produced=n,row\r\n",
       {}},
      {filter, u"reversemode=1\r\n" + conditions + kText, {}},
      // Blocks made by hand: the dialog's reading of them.
      {add, u"fillmode=3\r\ncolumnname=\r\n", u"totheend=1\r\nfillmode=0\r\n" + kPrevious},
      {dedupe, u"varname= n \r\n", u"casesensitive=0\r\nvarname=n\r\n" + kPrevious + u"_qm_variables_produced=n\r\n"},
      {read, u"cellcount=1\r\nval0=v\r\n",
       u"cellcount=1\r\nrow0=0\r\ncol0=0\r\nval0=v\r\n" + kPrevious + u"_qm_variables_produced=v\r\n"},
      {write, u"cellcount=-2\r\n", u"cellcount=0\r\n" + kPrevious},
      {merge, u"source=0\r\n", u"ajustcolumns=0\r\n" + kFile},
      // Lines padded to four fields, a missing one empty, flags as integers.
      {filter, u"conditionscount=3\r\ncondition00000000=3,abc\r\ncondition00000002=1, x ,2,y,z\r\n",
       u"reversemode=0\r\nconditionmode=0\r\nconditionscount=3\r\ncondition00000000=3,abc,0,0\r\n"
       u"condition00000001=,,0,0\r\ncondition00000002=1,x,1,0\r\n" +
           kPrevious},
  };
  for (size_t i = 0; i < std::size(cases); ++i) {
    const Case& c = cases[i];
    EXPECT_EQ(c.resave(c.block), c.saved.empty() ? c.block : c.saved) << "case " << i;
  }
}

// An editor that reads the task's table, its own fields valid: the source
// frame is checked, then (unless the source is the previous action) the format.
template <class Editor>
void ExpectPagesCheckedInOrder(Editor editor) {
  using Control = typename Editor::Control;
  auto& pages = editor.pages;
  pages.format.SelectDelimiter(DelimiterChoice::Custom);
  EXPECT_FALSE(editor.Check());  // the previous action's table: no format
  EXPECT_FALSE(pages.FormatPageVisible());
  pages.source.SelectSource(1);
  EXPECT_TRUE(pages.FormatPageVisible());
  auto failure = editor.Check();
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->control, Control{SourceControl::FileName});
  EXPECT_EQ(Editor::PageOf(failure->control), 1);
  EXPECT_EQ(failure->message, msg::kValueEmpty);
  EXPECT_EQ(failure->beep, Beep::Exclamation);
  pages.source.fileName = u"a.csv";
  failure = editor.Check();
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->control, Control{FormatControl::OtherChar});
  EXPECT_EQ(Editor::PageOf(failure->control), 2);
  pages.format.otherChar = u"|";
  EXPECT_FALSE(editor.Check());
}

TEST(Editors, TableReadersCheckSourceThenFormat) {
  CellsEditor cells(false);
  cells.cells.push_back({u"1", u"1", u""});
  ExpectPagesCheckedInOrder(cells);
  ExpectPagesCheckedInOrder(InformationEditor());
  MoveColumnEditor move;
  move.from = move.to = u"1";
  ExpectPagesCheckedInOrder(move);
  DataLoopEditor loop;
  loop.rowVar = u"row";
  ExpectPagesCheckedInOrder(loop);
  FilterDataEditor filter;
  filter.conditions.conditions.push_back({});
  ExpectPagesCheckedInOrder(filter);
}

// The own fields are checked before the pages, each at its control on page 0.
template <class Editor>
void ExpectOwnFailure(const Editor& editor, typename Editor::Control control, std::u16string_view message) {
  const auto failure = editor.Check();
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->control, control);
  EXPECT_EQ(Editor::PageOf(control), 0);
  EXPECT_EQ(failure->message, message);
}

TEST(Editors, OwnFieldsAreCheckedFirst) {
  const auto fileWithoutName = [](TableSourcePages& pages) { pages.source.source = CsvSource::File; };
  CellsEditor cells(true);
  fileWithoutName(cells.pages);
  ExpectOwnFailure(cells, CellsControl::List, msg::kListEmpty);
  SortEditor sort;
  fileWithoutName(sort.pages);
  ExpectOwnFailure(sort, SortControl::Column, msg::kValueEmpty);
  DataLoopEditor loop;
  fileWithoutName(loop.pages);
  loop.rowNumberVar = loop.rowVar = u" ";
  ExpectOwnFailure(loop, DataLoopControl::RowNumberVar, msg::kValueEmpty);
  FilterDataEditor filter;
  fileWithoutName(filter.pages);
  ExpectOwnFailure(filter, FilterDataControl::List, msg::kListEmpty);
}

TEST(Editors, OpenMergeAndSaveCheckTheirFramesInOrder) {
  OpenDataEditor open;
  MergeEditor merge;
  for (auto* format : {&open.format, &merge.format}) format->SelectDelimiter(DelimiterChoice::Custom);
  open.source.SelectSource(1);
  open.source.text = u"x";
  merge.source.fileName = u"x";
  EXPECT_EQ(OpenDataEditor::PageOf(open.Check()->control), 1);
  EXPECT_EQ(MergeEditor::PageOf(merge.Check()->control), 1);

  SaveDataEditor save;
  save.format.SelectDelimiter(DelimiterChoice::Custom);
  save.target.saveToFile = true;
  EXPECT_FALSE(save.FormatPageVisible());
  ASSERT_TRUE(save.Check());
  EXPECT_EQ(save.Check()->control, SaveDataEditor::Control{TargetControl::FileName});
  EXPECT_EQ(SaveDataEditor::PageOf(save.Check()->control), 0);
  save.target.fileName = u"o.csv";
  ASSERT_TRUE(save.Check());  // the format is checked even on its hidden page
  EXPECT_EQ(SaveDataEditor::PageOf(save.Check()->control), 1);
}

TEST(Editors, ADisabledBoxKeepsItsState) {
  SortEditor sort;
  sort.caseSensitive = true;
  EXPECT_TRUE(sort.IsEnabled(SortControl::CaseSensitive));
  sort.mode = SortMode::Numbers;
  EXPECT_FALSE(sort.IsEnabled(SortControl::CaseSensitive));
  TQMParamParser block;
  sort.Save(block);
  EXPECT_TRUE(block.GetBool(u"casesensitive"));  // a disabled box keeps its state
}

TEST(CellsEditor, ListCommandsAndTheCellEditor) {
  CellsEditor e(true);
  for (const auto command : {ListCommand::Edit, ListCommand::Remove}) {
    EXPECT_EQ(e.Refusal(command, -1), Beep::Default);
    EXPECT_EQ(e.Refusal(command, 0), Beep::Default);  // an empty list has no row 0
  }
  EXPECT_FALSE(e.Refusal(ListCommand::Add, -1));
  EXPECT_FALSE(e.BeginEdit(0));
  EXPECT_FALSE(e.Remove(0));

  CellItemEditor item = e.BeginAdd();
  ASSERT_TRUE(item.Check());
  EXPECT_EQ(item.Check()->control, CellItemControl::Row);
  EXPECT_EQ(item.Check()->beep, Beep::Default);
  EXPECT_TRUE(item.Check()->message.empty());
  item.entry = {u"1", u" ", u""};
  ASSERT_TRUE(item.Check());
  EXPECT_EQ(item.Check()->control, CellItemControl::Column);
  item.entry = {u"1", u"x", u""};  // not checked as numbers; the value may be empty
  EXPECT_FALSE(item.Check());
  e.FinishAdd(item);
  item.entry = {u"2", u"2", u"v"};
  e.FinishAdd(item);

  EXPECT_FALSE(e.Refusal(ListCommand::Edit, 1));
  auto edit = e.BeginEdit(1);
  ASSERT_TRUE(edit);
  EXPECT_EQ(edit->entry, (CellEntry{u"2", u"2", u"v"}));
  edit->entry.value = u"w";
  e.FinishEdit(1, *edit);
  EXPECT_TRUE(e.Remove(0));
  ASSERT_EQ(e.cells.size(), 1u);
  EXPECT_EQ(e.cells[0], (CellEntry{u"2", u"2", u"w"}));
}

TEST(ConditionList, CommandsAndTheConditionEditor) {
  ConditionList list;
  for (const auto command : {ListCommand::Edit, ListCommand::Remove}) {
    EXPECT_EQ(list.Refusal(command, -1), Beep::Default);
    EXPECT_EQ(list.Refusal(command, 0), Beep::Default);
  }
  EXPECT_FALSE(list.Refusal(ListCommand::Add, -1));
  EXPECT_FALSE(list.BeginEdit(0));

  ConditionEditor added = ConditionList::BeginAdd();
  EXPECT_EQ(added.Caption(), u"Add condition");
  EXPECT_EQ(added.fields, ConditionFields{});
  EXPECT_EQ(added.ExpressionLabel(), ConditionEditor::kTextLabel);
  added.fields = {u"", u"a,b", true, true};  // an empty column is kept
  EXPECT_EQ(added.ExpressionLabel(), ConditionEditor::kPatternLabel);
  list.FinishAdd(added);
  list.FinishAdd(ConditionEditor(false, {u"2", u"x", false, false}));

  auto edited = list.BeginEdit(0);
  ASSERT_TRUE(edited);
  EXPECT_EQ(edited->Caption(), u"Edit condition");
  EXPECT_EQ(edited->ExpressionLabel(), ConditionEditor::kPatternLabel);  // at once, from the flag
  edited->fields.caseSensitive = false;
  list.FinishEdit(0, *edited);
  EXPECT_EQ(ConditionList::RowTexts(list.conditions[0]), (std::array<std::u16string, 4>{u"", u"a,b", u"no", u"YES"}));
  EXPECT_TRUE(list.Remove(1));
  EXPECT_FALSE(list.Remove(1));
  ASSERT_EQ(list.conditions.size(), 1u);
}

}  // namespace
}  // namespace qm
