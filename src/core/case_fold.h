// Unicode simple case folding: the caseless form of a text, used wherever two
// texts are compared or searched without regard to letter case (record
// conditions, duplicate keys). Folding is a pure table lookup, identical in
// every build, and never changes the UTF-16 length of a text, so a folded text
// can be hashed or compared as it stands and a reused buffer never reallocates
// once it has grown to the longest text seen.
#pragma once

#include <string>
#include <string_view>

namespace qm {

// The simple case folding of one code point (CaseFolding.txt, statuses C and
// S). Code points without a folding, surrogates and values beyond U+10FFFF are
// returned unchanged. "Ä" folds to "ä", "Σ" and "ς" both to "σ"; "ß" stays "ß".
char32_t FoldCase(char32_t cp) noexcept;

// Writes the folded form of `in` to `out` (replacing its content; `out` may not
// alias `in`). Surrogate pairs are folded as the code points they encode; a lone
// surrogate is copied unchanged. out.size() == in.size() afterwards.
void FoldCase(std::u16string_view in, std::u16string& out);

// Folds `count` code units from `in` to `out`, which must have room for them;
// in == out is allowed. The building block of the overload above for callers
// that keep their own buffers.
void FoldCase(const char16_t* in, size_t count, char16_t* out) noexcept;

}  // namespace qm
