#include "dialogs/source_frame.h"

#include <algorithm>

#include "boundary/param_parser.h"
#include "core/messages.h"
#include "core/step_keys.h"
#include "core/text_lines.h"

namespace qm {

SourceFrame::SourceFrame(bool openMode) : openMode_(openMode) {
  if (openMode_) source = CsvSource::File;
}

std::span<const std::u16string_view> SourceFrame::SourceItems() const {
  return std::span(kSourceItems).subspan(openMode_ ? 1 : 0);
}

int32_t SourceFrame::SourceIndex() const { return static_cast<int32_t>(source) - (openMode_ ? 1 : 0); }

void SourceFrame::SelectSource(int32_t index) {
  if (index < 0 || index >= static_cast<int32_t>(SourceItems().size())) index = 0;
  source = CsvSource{index + (openMode_ ? 1 : 0)};
}

void SourceFrame::Load(const TQMParamParser& block) {
  SelectSource(block.GetInteger(keys::kSource) - (openMode_ ? 1 : 0));
  fileName = block.GetString(keys::kFileName);
  encoding = EncodingFromIndex(block.GetInteger(keys::kEncoding));
  skipFirst = std::clamp(block.GetInteger(keys::kSkipFirst), kSkipFirstMin, kSkipFirstMax);
  skipEmpty = block.GetBool(keys::kSkipEmpty);
  skipComments = block.GetBool(keys::kSkipComments);
  commentChars = block.GetString(keys::kCommentChars);
  if (IsBlank(commentChars)) {
    skipComments = false;
    commentChars = keys::kCommentChars.fallback;
  }
  headerLine = block.GetBool(keys::kHeaderLine);
  text.clear();
  const int32_t lineCount = block.GetInteger(keys::kLineCount);
  for (int32_t i = 0; i < lineCount; ++i) text += block.GetString(keys::kLine, i) + u"\r\n";
}

void SourceFrame::Save(TQMParamParser& block) const {
  block.SetInteger(keys::kSource, static_cast<int32_t>(source));
  block.SetString(keys::kFileName, fileName);
  block.SetInteger(keys::kEncoding, static_cast<int32_t>(encoding));
  block.SetInteger(keys::kSkipFirst, skipFirst);
  block.SetBool(keys::kSkipEmpty, skipEmpty);
  block.SetBool(keys::kSkipComments, skipComments);
  block.SetString(keys::kCommentChars, commentChars);
  block.SetBool(keys::kHeaderLine, headerLine);
  const std::vector<std::u16string> lines = SplitLines(text);
  block.SetInteger(keys::kLineCount, static_cast<int32_t>(lines.size()));
  for (size_t i = 0; i < lines.size(); ++i) block.SetString(keys::kLine, static_cast<int32_t>(i), lines[i]);
}

bool SourceFrame::IsVisible(SourceControl control) const {
  // In full mode the options and pages show for a file or a text only, so the
  // note page is never on screen; in open mode the source is never the
  // previous action.
  const bool pages = source != CsvSource::PreviousAction;
  switch (control) {
    case SourceControl::SourceChoice: return true;
    case SourceControl::OptionsPanel:
    case SourceControl::Pages:
    case SourceControl::SkipFirstLabel:
    case SourceControl::SkipFirst:
    case SourceControl::SkipEmpty:
    case SourceControl::SkipComments:
    case SourceControl::CommentChars:
    case SourceControl::HeaderLine: return pages;
    case SourceControl::PreviousNote: return pages && ShownPage() == 0;
    case SourceControl::FileNameLabel:
    case SourceControl::FileName:
    case SourceControl::FileBrowse:
    case SourceControl::EncodingLabel:
    case SourceControl::Encoding: return pages && ShownPage() == 1;
    case SourceControl::Text: return pages && ShownPage() == 2;
  }
  return true;
}

bool SourceFrame::IsEnabled(SourceControl control) const {
  return control == SourceControl::CommentChars ? skipComments : true;
}

CheckResult<SourceControl> SourceFrame::Check() const {
  if (source == CsvSource::File && IsBlank(fileName)) return Fail(SourceControl::FileName, msg::kValueEmpty);
  if (source == CsvSource::Text && IsBlank(text)) return Fail(SourceControl::Text, msg::kValueEmpty);
  return std::nullopt;
}

}  // namespace qm
