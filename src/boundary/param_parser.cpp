#include "boundary/param_parser.h"

#include <algorithm>
#include <iterator>

#include "core/convert.h"
#include "core/step_keys.h"
#include "core/text_lines.h"

namespace qm {

namespace {

char16_t FoldAscii(char16_t c) { return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c; }

// Names compare with ASCII letters folded, nothing else.
std::u16string FoldedName(std::u16string_view name) {
  std::u16string folded(name);
  for (auto& c : folded) c = FoldAscii(c);
  return folded;
}

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
  View(ZText(params.PPtr, params.Size > 0 ? static_cast<size_t>(params.Size) / 2 : SIZE_MAX));
  TaskID = params.TaskID;
  StepNum = params.StepNum;
  IsRemote = params.IsRemote != 0;
}

TQMParamParser::TQMParamParser(const TAFEventParams& params) {
  View(ZText(params.PPtr, params.Size > 0 ? static_cast<size_t>(params.Size) / 2 : SIZE_MAX));
  IsEvent = true;
  TaskID = static_cast<uint32_t>(params.JobID);
  UniqueID = params.UniqueID;
  IsRemote = params.IsRemote != 0;
}

void TQMParamParser::SetText(std::u16string_view text) {
  lines_ = SplitLines(text);
  viewed_ = false;
  viewCount_ = 0;
  Reindex();
}

void TQMParamParser::View(std::u16string_view text) {
  TextLineCursor cursor(text);
  size_t count = 0;
  for (std::u16string_view line; cursor.Next(line);) {
    if (count == views_.size()) return SetText(text);
    views_[count++] = line;
  }
  lines_.clear();
  index_.clear();
  viewCount_ = count;
  viewed_ = true;
}

void TQMParamParser::Own() {
  if (!viewed_) return;
  lines_.assign(views_.begin(), views_.begin() + static_cast<std::ptrdiff_t>(viewCount_));
  viewed_ = false;
  viewCount_ = 0;
  Reindex();
}

void TQMParamParser::Reindex() {
  index_.clear();
  if (viewed_ || lines_.size() <= kScannedLines) return;
  index_.reserve(lines_.size());
  for (size_t i = 0; i < lines_.size(); ++i) index_.try_emplace(FoldedName(NameOf(lines_[i])), static_cast<int>(i));
}

std::u16string TQMParamParser::Text() const {
  std::u16string text;
  for (size_t i = 0; i < LineCount(); ++i) {
    text += Line(i);
    text += u"\r\n";
  }
  return text;
}

int TQMParamParser::Find(std::u16string_view name) const {
  if (LineCount() <= kScannedLines) {
    for (size_t i = 0; i < LineCount(); ++i) {
      if (SameName(NameOf(Line(i)), name)) return static_cast<int>(i);
    }
    return -1;
  }
  // Usual names are folded in place; a long one on the heap.
  char16_t buffer[64];
  std::u16string longName;
  std::u16string_view folded;
  if (name.size() <= std::size(buffer)) {
    std::transform(name.begin(), name.end(), buffer, FoldAscii);
    folded = std::u16string_view(buffer, name.size());
  } else {
    longName = FoldedName(name);
    folded = longName;
  }
  const auto found = index_.find(folded);
  return found == index_.end() ? -1 : found->second;
}

std::u16string_view TQMParamParser::GetStringView(std::u16string_view name, std::u16string_view fallback) const {
  const int i = Find(name);
  if (i < 0) return fallback;
  const std::u16string_view line = Line(static_cast<size_t>(i));
  const size_t eq = line.find(u'=');
  return eq == std::u16string_view::npos ? std::u16string_view() : line.substr(eq + 1);
}

int32_t TQMParamParser::GetIntegerDef(std::u16string_view name, int32_t fallback) const {
  if (!ParamExist(name)) return fallback;
  return StrToIntDef(GetStringView(name), fallback);
}

bool TQMParamParser::GetBoolDef(std::u16string_view name, bool fallback) const {
  const std::u16string_view value = GetStringView(name);
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
  Own();
  const int i = Find(name);
  if (value.empty()) {
    if (i >= 0) {
      // The lines after it move up, and a later line of the same name
      // becomes the first.
      lines_.erase(lines_.begin() + i);
      Reindex();
    }
    return;
  }
  std::u16string line(name);
  line += u'=';
  line += value;
  if (i >= 0) {
    lines_[static_cast<size_t>(i)] = std::move(line);
  } else {
    lines_.push_back(std::move(line));
    if (lines_.size() == kScannedLines + 1) {
      Reindex();
    } else if (lines_.size() > kScannedLines + 1) {
      index_.try_emplace(FoldedName(name), static_cast<int>(lines_.size() - 1));
    }
  }
}

void TQMParamParser::SetInteger(std::u16string_view name, int32_t value) { SetString(name, IntToStr(value)); }

std::u16string TQMParamParser::GetString(const keys::StepKey& key) const {
  return GetStringDef(key.name, key.fallback);
}

std::u16string TQMParamParser::GetString(const keys::StepKey& key, int32_t index) const {
  return GetStringDef(keys::IndexedName(key, index), key.fallback);
}

int32_t TQMParamParser::GetInteger(const keys::StepKey& key) const {
  return GetIntegerDef(key.name, key.IntegerFallback());
}

bool TQMParamParser::GetBool(const keys::StepKey& key) const { return GetBoolDef(key.name, key.BoolFallback()); }

void TQMParamParser::SetString(const keys::StepKey& key, std::u16string_view value) { SetString(key.name, value); }

void TQMParamParser::SetString(const keys::StepKey& key, int32_t index, std::u16string_view value) {
  SetString(keys::IndexedName(key, index), value);
}

void TQMParamParser::SetInteger(const keys::StepKey& key, int32_t value) { SetInteger(key.name, value); }

void TQMParamParser::SetBool(const keys::StepKey& key, bool value) { SetBool(key.name, value); }

void TQMParamParser::SetStrings(std::u16string_view name, const std::vector<std::u16string>& items) {
  SetInteger(std::u16string(name) + u"_count", static_cast<int32_t>(items.size()));
  for (size_t i = 0; i < items.size(); ++i) SetString(ListKey(name, static_cast<int32_t>(i)), items[i]);
}

std::vector<int32_t> TQMParamParser::PresentIndices(std::u16string_view prefix, int32_t count,
                                                    std::u16string (*keyOf)(int32_t)) const {
  std::vector<int32_t> indices;
  const std::u16string start = FoldedName(prefix);
  // Each distinct name once: from the index, or from the lines where a name
  // counts at its first line only.
  std::vector<std::u16string> scanned;
  if (LineCount() <= kScannedLines) {
    for (size_t i = 0; i < LineCount(); ++i) {
      if (Find(NameOf(Line(i))) == static_cast<int>(i)) scanned.push_back(FoldedName(NameOf(Line(i))));
    }
  } else {
    for (const auto& entry : index_) scanned.push_back(entry.first);
  }
  for (const std::u16string& name : scanned) {
    if (name.size() <= start.size() || name.size() > start.size() + 8 || name.compare(0, start.size(), start) != 0) {
      continue;
    }
    uint32_t value = 0;
    bool digits = true;
    for (size_t k = start.size(); k < name.size() && digits; ++k) {
      const char16_t c = name[k];
      digits = (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F');
      value = value * 16 + static_cast<uint32_t>(c <= u'9' ? c - u'0' : c - u'A' + 10);
    }
    const auto i = static_cast<int32_t>(value);
    if (digits && i >= 0 && i < count && FoldedName(keyOf(i)) == name) indices.push_back(i);
  }
  std::sort(indices.begin(), indices.end());
  return indices;
}

}  // namespace qm
