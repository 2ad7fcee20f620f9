#include "boundary/plugin_params.h"

#include <algorithm>
#include <cstring>

#include "core/convert.h"
#include "core/errors.h"
#include "core/messages.h"
#include "boundary/host_services.h"
#include "core/delimited_text.h"

namespace qm {

namespace {

template <typename Record>
void WriteBlock(const std::u16string& text, Record& params) {
  const TAFAppInfo& app = HostApp();
  if (params.Size != 0 && params.PPtr != nullptr) {
    void* old = params.PPtr;
    app.QMFreeMemory(&old, params.Size);
  }
  params.Size = static_cast<int32_t>((text.size() + 1) * sizeof(char16_t));
  void* block = nullptr;
  app.QMGetMemory(&block, params.Size);
  std::memcpy(block, text.c_str(), static_cast<size_t>(params.Size));
  params.PPtr = static_cast<char16_t*>(block);
}

int CompareNoCase(std::u16string_view a, std::u16string_view b) {
  const size_t n = std::min(a.size(), b.size());
  for (size_t i = 0; i < n; ++i) {
    char16_t x = a[i] >= u'a' && a[i] <= u'z' ? static_cast<char16_t>(a[i] - 32) : a[i];
    char16_t y = b[i] >= u'a' && b[i] <= u'z' ? static_cast<char16_t>(b[i] - 32) : b[i];
    if (x != y) return x < y ? -1 : 1;
  }
  return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

}  // namespace

void TQMPluginParams::ToActionParams(TAFActionParams& params) const {
  if (IsEvent) throw QmError(msg::kNotActionParams);
  WriteBlock(Text(), params);
}

void TQMPluginParams::ToEventParams(TAFEventParams& params) const {
  if (!IsEvent) throw QmError(msg::kNotEventParams);
  WriteBlock(Text(), params);
}

bool TProducedVariables::AddVarName(std::u16string_view name) {
  const std::u16string_view trimmed = Trim(name);
  if (trimmed.empty()) return false;
  const auto at =
      std::lower_bound(names_.begin(), names_.end(), trimmed,
                       [](const std::u16string& a, std::u16string_view b) { return CompareNoCase(a, b) < 0; });
  if (at == names_.end() || CompareNoCase(*at, trimmed) != 0) names_.insert(at, std::u16string(trimmed));
  return true;
}

std::u16string TProducedVariables::GetVariables() const { return JoinDelimited(names_, kCommaText); }

}  // namespace qm
