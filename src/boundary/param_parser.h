// A step's parameter block: name=value lines with typed access.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "abi/host_abi.h"

namespace qm {

namespace keys {
struct StepKey;
}

// A block read from the host's parameter record is read in place, without a
// copy, until it is changed (or when it holds more than a few lines): the
// record's block must outlive the parser, as it does during the host's call.
class TQMParamParser {
 public:
  TQMParamParser() = default;
  explicit TQMParamParser(const TAFActionParams& params);
  explicit TQMParamParser(const TAFEventParams& params);
  // A block from its text (CR LF, LF or CR end a line).
  explicit TQMParamParser(std::u16string_view text) { SetText(text); }

  void Clear() {
    lines_.clear();
    index_.clear();
    viewCount_ = 0;
    viewed_ = false;
  }
  bool ParamExist(std::u16string_view name) const { return Find(name) >= 0; }

  std::u16string GetString(std::u16string_view name) const { return GetStringDef(name, {}); }
  // A present but empty value is returned as it is, not replaced by the default.
  std::u16string GetStringDef(std::u16string_view name, std::u16string_view fallback) const {
    return std::u16string(GetStringView(name, fallback));
  }
  // The same without a copy: valid until the block changes or the parser goes.
  std::u16string_view GetStringView(std::u16string_view name, std::u16string_view fallback = {}) const;
  int32_t GetInteger(std::u16string_view name) const { return GetIntegerDef(name, 0); }
  int32_t GetIntegerDef(std::u16string_view name, int32_t fallback) const;
  bool GetBool(std::u16string_view name) const { return GetBoolDef(name, false); }
  bool GetBoolDef(std::u16string_view name, bool fallback) const;
  // A declared key (core/step_keys.h) read with its declared default, as
  // GetStringDef, GetIntegerDef and GetBoolDef read theirs; `index` names
  // the entry of an indexed key.
  std::u16string GetString(const keys::StepKey& key) const;
  std::u16string GetString(const keys::StepKey& key, int32_t index) const;
  int32_t GetInteger(const keys::StepKey& key) const;
  bool GetBool(const keys::StepKey& key) const;
  // A list stored as name_count and name_0 .. name_<n-1>, joined by CR LF.
  std::u16string GetStrings(std::u16string_view name) const { return GetStringsDef(name, {}); }
  std::u16string GetStringsDef(std::u16string_view name, std::u16string_view fallback) const;

  // An empty value removes the line: the key then reads as its default.
  void SetString(std::u16string_view name, std::u16string_view value);
  void SetInteger(std::u16string_view name, int32_t value);
  void SetBool(std::u16string_view name, bool value) { SetString(name, value ? u"1" : u"0"); }
  void SetStrings(std::u16string_view name, const std::vector<std::u16string>& items);
  void SetString(const keys::StepKey& key, std::u16string_view value);
  void SetString(const keys::StepKey& key, int32_t index, std::u16string_view value);
  void SetInteger(const keys::StepKey& key, int32_t value);
  void SetBool(const keys::StepKey& key, bool value);

  // The indices below `count` for which the block holds the key keyOf(i),
  // ascending. Found from the block's names, so a count far beyond what the
  // block holds costs nothing: each name that starts with `prefix` (the
  // common start of every keyOf(i), e.g. "line") and ends in hexadecimal
  // digits is checked against keyOf of its value.
  std::vector<int32_t> PresentIndices(std::u16string_view prefix, int32_t count,
                                      std::u16string (*keyOf)(int32_t)) const;

  // The whole block, every line ending in CR LF.
  std::u16string Text() const;
  void SetText(std::u16string_view text);

  bool IsEvent = false;
  uint32_t TaskID = 0;
  int32_t StepNum = 0;
  uint32_t UniqueID = 0;
  bool IsRemote = false;

 private:
  // Blocks of up to this many lines are searched line by line, which costs
  // less than building an index for each step call; larger ones are indexed.
  static constexpr size_t kScannedLines = 16;
  int Find(std::u16string_view name) const;
  void Reindex();
  size_t LineCount() const noexcept { return viewed_ ? viewCount_ : lines_.size(); }
  std::u16string_view Line(size_t i) const noexcept { return viewed_ ? views_[i] : std::u16string_view(lines_[i]); }
  // Reads a block in place when it has few lines, else as SetText.
  void View(std::u16string_view text);
  // Copies the lines of a block read in place, before a change.
  void Own();

  // The lines of a block read in place (viewed_), or of a copied one.
  std::array<std::u16string_view, kScannedLines> views_{};
  size_t viewCount_ = 0;
  bool viewed_ = false;
  std::vector<std::u16string> lines_;
  // Each name in ASCII upper case, to the first line that holds it (a key
  // given twice reads as its first line); empty for a block that is scanned.
  // Looked up by view, so that a lookup copies no name to the heap.
  struct NameHash {
    using is_transparent = void;
    size_t operator()(std::u16string_view name) const noexcept { return std::hash<std::u16string_view>{}(name); }
  };
  std::unordered_map<std::u16string, int, NameHash, std::equal_to<>> index_;
};

// A zero-terminated UTF-16 text as a view (null gives the empty view).
std::u16string_view ZText(const char16_t* text, size_t limit = SIZE_MAX);

}  // namespace qm
