#include "dialogs/access_keys.h"

namespace qm {

namespace {

char16_t Upper(char16_t c) { return c >= u'a' && c <= u'z' ? char16_t(c - u'a' + u'A') : c; }

bool IsKey(char16_t c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9'); }

}  // namespace

char16_t AccessKeys::KeyOf(std::u16string_view caption) {
  for (size_t i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != u'&') continue;
    if (caption[i + 1] != u'&') return Upper(caption[i + 1]);
    ++i;  // "&&" is an ampersand shown as such
  }
  return 0;
}

bool AccessKeys::Free(char16_t c) const { return IsKey(c) && taken_.find(Upper(c)) == std::u16string::npos; }

std::u16string AccessKeys::Assign(std::u16string_view caption) {
  std::u16string out(caption);
  if (const char16_t key = KeyOf(caption)) {
    taken_.push_back(key);
    return out;
  }
  // "&&" shown as "&" is never a key position; neither is the "&" itself.
  auto chosen = std::u16string::npos;
  bool wordStart = true;
  for (size_t i = 0; i < out.size() && chosen == std::u16string::npos; ++i) {
    if ((i == 0 || wordStart) && Free(out[i])) chosen = i;
    wordStart = out[i] == u' ' || out[i] == u'(' || out[i] == u'-';
  }
  for (size_t i = 0; i < out.size() && chosen == std::u16string::npos; ++i) {
    if (out[i] == u'&') {
      ++i;
      continue;
    }
    if (Free(out[i])) chosen = i;
  }
  if (chosen == std::u16string::npos) return out;
  taken_.push_back(Upper(out[chosen]));
  out.insert(chosen, 1, u'&');
  return out;
}

}  // namespace qm
