// A Perl-compatible regular expression searched for within one cell: PCRE2 with
// 16-bit code units and UTF semantics, case-insensitive on request, JIT-compiled
// where the library supports it. Compiled once and reused for every cell.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

// The library's own types (PCRE2_CODE_UNIT_WIDTH 16), declared here so that
// users of this header do not see pcre2.h.
struct pcre2_real_code_16;
struct pcre2_real_match_data_16;
struct pcre2_real_match_context_16;
struct pcre2_real_jit_stack_16;

namespace qm {

class Regex {
 public:
  // Backtracking budget of one start position in a cell (the library counts
  // per start position, in the interpreter and in the JIT alike). A pattern
  // that needs more, such as (a+)+$ on a long run of a's that ends in
  // something else, fails with "match limit exceeded".
  static constexpr uint32_t kMatchLimit = 1'000'000;
  // Nesting of backtracking points the interpreter may keep, and the heap (KiB)
  // it may use for them.
  static constexpr uint32_t kDepthLimit = 1'000'000;
  static constexpr uint32_t kHeapLimitKiB = 256 * 1024;
  // The work one cell may take over all its start positions. A first search
  // shares kCellMatchBudget among the cell's start positions; when one of them
  // needs more, the search is repeated with a callout before every item of
  // the pattern, which counts the work of the whole cell exactly and stops it
  // at kCellCallouts plus kCalloutsPerUnit per code unit. Either way a cell
  // takes well under 100 ms here unless it is megabytes long.
  static constexpr uint32_t kCellMatchBudget = 1'000'000;
  static constexpr uint64_t kCellCallouts = 1'000'000;
  static constexpr uint64_t kCalloutsPerUnit = 16;

  // Keeps the pattern; nothing is compiled yet. `allowJit` false keeps the
  // pattern in the interpreter even where the JIT is available, the path a
  // build without JIT takes (tests run both).
  Regex(std::u16string pattern, bool caseless, bool allowJit = true);
  ~Regex();
  Regex(const Regex&) = delete;
  Regex& operator=(const Regex&) = delete;

  const std::u16string& Pattern() const noexcept { return pattern_; }
  bool Caseless() const noexcept { return caseless_; }
  bool IsCompiled() const noexcept { return code_ != nullptr; }
  // True once compiled when the JIT took the pattern.
  bool UsesJit() const noexcept { return jit_; }

  // Compiles the pattern unless that has been done. A malformed pattern raises
  // ERegexError with the library's message and the offset of the error, e.g.
  // "missing closing parenthesis at offset 4", and stays uncompiled.
  void Compile();

  // Whether the pattern matches anywhere in `subject` (compiling it first if
  // need be). Any failure other than "no match", such as an exceeded match
  // limit or cell budget, raises ERegexError with the library's message.
  bool Search(std::u16string_view subject);

  // Whether the library in use was built with JIT support.
  static bool JitAvailable() noexcept;

 private:
  struct CodeDeleter {
    void operator()(pcre2_real_code_16* p) const noexcept;
  };
  struct MatchDataDeleter {
    void operator()(pcre2_real_match_data_16* p) const noexcept;
  };
  struct MatchContextDeleter {
    void operator()(pcre2_real_match_context_16* p) const noexcept;
  };
  struct JitStackDeleter {
    void operator()(pcre2_real_jit_stack_16* p) const noexcept;
  };

  // The pattern compiled with PCRE2_AUTO_CALLOUT, made at the first cell that
  // needs its work counted.
  void CompileCounted();
  int MatchCounted(std::u16string_view subject, const char16_t* text);

  std::u16string pattern_;
  bool caseless_;
  bool allowJit_;
  bool jit_ = false;
  std::unique_ptr<pcre2_real_code_16, CodeDeleter> code_;
  std::unique_ptr<pcre2_real_code_16, CodeDeleter> countedCode_;
  std::unique_ptr<pcre2_real_match_data_16, MatchDataDeleter> matchData_;
  std::unique_ptr<pcre2_real_match_context_16, MatchContextDeleter> matchContext_;
  std::unique_ptr<pcre2_real_jit_stack_16, JitStackDeleter> jitStack_;
};

}  // namespace qm
