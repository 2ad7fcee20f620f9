#include "boundary/param_parser.h"

#include "core/convert.h"
#include "core/text_lines.h"

namespace qm {

namespace {

char16_t FoldAscii(char16_t c) { return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c; }

bool SameName(std::u16string_view a, std::u16string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (FoldAscii(a[i]) != FoldAscii(b[i])) return false;
  }
  return true;
}

std::u16string_view NameOf(std::u16string_view line) {
  const size_t eq = line.find(u'=');
  return eq == std::u16string_view::npos ? line : line.substr(0, eq);
}

std::u16string ListKey(std::u16string_view name, int32_t index) {
  std::u16string key(name);
  key += u'_';
  key += IntToStr(index);
  return key;
}

}  // namespace

std::u16string_view ZText(const char16_t* text, size_t limit) {
  if (!text) return {};
  size_t n = 0;
  while (n < limit && text[n] != 0) ++n;
  return {text, n};
}

TQMParamParser::TQMParamParser(const TAFActionParams& params) {
  // Size counts bytes with the terminator; stop at the terminator or there.
  SetText(ZText(params.PPtr, params.Size > 0 ? static_cast<size_t>(params.Size) / 2 : SIZE_MAX));
  TaskID = params.TaskID;
  StepNum = params.StepNum;
  IsRemote = params.IsRemote != 0;
}

TQMParamParser::TQMParamParser(const TAFEventParams& params) {
  SetText(ZText(params.PPtr, params.Size > 0 ? static_cast<size_t>(params.Size) / 2 : SIZE_MAX));
  IsEvent = true;
  TaskID = static_cast<uint32_t>(params.JobID);
  UniqueID = params.UniqueID;
  IsRemote = params.IsRemote != 0;
}

void TQMParamParser::SetText(std::u16string_view text) { lines_ = SplitLines(text); }

std::u16string TQMParamParser::Text() const {
  std::u16string text;
  for (const auto& line : lines_) {
    text += line;
    text += u"\r\n";
  }
  return text;
}

int TQMParamParser::Find(std::u16string_view name) const {
  for (size_t i = 0; i < lines_.size(); ++i) {
    if (SameName(NameOf(lines_[i]), name)) return static_cast<int>(i);
  }
  return -1;
}

std::u16string TQMParamParser::GetStringDef(std::u16string_view name, std::u16string_view fallback) const {
  const int i = Find(name);
  if (i < 0) return std::u16string(fallback);
  const std::u16string& line = lines_[static_cast<size_t>(i)];
  const size_t eq = line.find(u'=');
  return eq == std::u16string::npos ? std::u16string() : line.substr(eq + 1);
}

int32_t TQMParamParser::GetIntegerDef(std::u16string_view name, int32_t fallback) const {
  if (!ParamExist(name)) return fallback;
  return StrToIntDef(GetString(name), fallback);
}

bool TQMParamParser::GetBoolDef(std::u16string_view name, bool fallback) const {
  const std::u16string value = GetString(name);
  if (value.empty()) return fallback;
  return StrToIntDef(value, 0) != 0;
}

std::u16string TQMParamParser::GetStringsDef(std::u16string_view name, std::u16string_view fallback) const {
  const int32_t count = GetInteger(std::u16string(name) + u"_count");
  std::u16string result;
  for (int32_t i = 0; i < count; ++i) {
    // The separator comes only after something: leading empty items vanish.
    if (!result.empty()) result += u"\r\n";
    result += GetString(ListKey(name, i));
  }
  return result.empty() ? std::u16string(fallback) : result;
}

void TQMParamParser::SetString(std::u16string_view name, std::u16string_view value) {
  const int i = Find(name);
  if (value.empty()) {
    if (i >= 0) lines_.erase(lines_.begin() + i);
    return;
  }
  std::u16string line(name);
  line += u'=';
  line += value;
  if (i >= 0) {
    lines_[static_cast<size_t>(i)] = std::move(line);
  } else {
    lines_.push_back(std::move(line));
  }
}

void TQMParamParser::SetInteger(std::u16string_view name, int32_t value) { SetString(name, IntToStr(value)); }

void TQMParamParser::SetStrings(std::u16string_view name, const std::vector<std::u16string>& items) {
  SetInteger(std::u16string(name) + u"_count", static_cast<int32_t>(items.size()));
  for (size_t i = 0; i < items.size(); ++i) SetString(ListKey(name, static_cast<int32_t>(i)), items[i]);
}

}  // namespace qm
