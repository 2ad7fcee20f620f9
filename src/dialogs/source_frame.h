// The CSV source frame: where a step's table comes from (the task's table, a
// file or typed text) and how its lines are skipped. Open mode (Open Data,
// Merge Data) offers only "File" and "Text".
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "dialogs/dialog_check.h"
#include "table/csv_source_settings.h"
#include "table/text_encoding.h"

namespace qm {

class TQMParamParser;

enum class SourceControl : uint8_t {
  SourceChoice,  // radio group "CSV source"
  OptionsPanel,  // the skip options and the pages below
  Pages,         // page control without tabs: 0 the note, 1 the file, 2 the text
  PreviousNote,
  FileNameLabel,
  FileName,
  FileBrowse,
  EncodingLabel,
  Encoding,
  Text,
  SkipFirstLabel,
  SkipFirst,
  SkipEmpty,
  SkipComments,
  CommentChars,
  HeaderLine,
};

inline constexpr std::array<std::u16string_view, 6> kEncodingItems = {u"Default", u"UTF-7", u"UTF-8",
                                                                      u"Unicode", u"ASCII", u"ANSI"};

class SourceFrame {
 public:
  static constexpr std::u16string_view kCaption = u"CSV source";
  static constexpr std::array<std::u16string_view, 3> kSourceItems = {u"Prev. CSV action", u"File", u"Text"};
  static constexpr std::u16string_view kFileNameLabel = u"File name:";
  static constexpr std::u16string_view kEncodingLabel = u"Encoding:";
  static constexpr std::u16string_view kSkipFirstLabel = u"Skip first lines: ";
  static constexpr std::u16string_view kSkipEmpty = u"Skip empty lines";
  static constexpr std::u16string_view kSkipComments = u"Skip lines starting with:";
  static constexpr std::u16string_view kHeaderLine = u"First row is column headers";
  static constexpr std::array<std::u16string_view, 3> kCommentItems = {u"#", u"!", u"//"};
  static constexpr int32_t kSkipFirstMin = 0;
  static constexpr int32_t kSkipFirstMax = 100;
  static constexpr std::u16string_view kPreviousNote =
      u"The using the CSV data from the previous steps. If you want to use new data, use other options.";
  static constexpr std::u16string_view kBrowseTitle = u"Open file";
  static constexpr std::u16string_view kBrowseFilter = u"CSV files|*.csv|Text files|*.txt|All files|*.*";

  explicit SourceFrame(bool openMode = false);

  // Every source key; `source` outside the offered choices selects the first
  // one, `skipfirst` is held to the spinner's range, a blank comment text
  // gives "#" with skipping off, the stored lines fill the text each followed
  // by CR LF.
  void Load(const TQMParamParser& block);
  // `source`, `filename`, `encoding`, `skipfirst`, `skipempty`,
  // `skipcomments`, `commentchars`, `headerline`, then the text's lines as
  // `linecount` and `line` + 8 hex digits.
  void Save(TQMParamParser& block) const;

  bool OpenMode() const { return openMode_; }
  // The radio group: its items and columns, and the item of the current source.
  std::span<const std::u16string_view> SourceItems() const;
  int32_t SourceColumns() const { return openMode_ ? 2 : 3; }
  int32_t SourceIndex() const;
  void SelectSource(int32_t index);
  // The page of the page control shown for the current source.
  int32_t ShownPage() const { return static_cast<int32_t>(source); }

  bool IsVisible(SourceControl control) const;
  bool IsEnabled(SourceControl control) const;
  // A file source needs a file name, a text source a text (blank is empty).
  CheckResult<SourceControl> Check() const;

  CsvSource source = CsvSource::PreviousAction;
  std::u16string fileName;
  TextEncoding encoding = TextEncoding::Default;
  std::u16string text;
  int32_t skipFirst = 0;
  bool skipEmpty = true;
  bool skipComments = false;
  std::u16string commentChars = u"#";
  bool headerLine = false;

 private:
  bool openMode_;
};

}  // namespace qm
