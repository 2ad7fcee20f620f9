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
  // The work one cell may take, in items of the pattern reached (counted by a
  // callout before each item): kCellBase, plus kVisitsPerUnit visits of every
  // item of the pattern per code unit of the cell. A search whose work grows
  // in step with the cell (a lazy alpha.*?omega over one megabyte, a scan
  // with \d+-\d+!) stays far below it whatever the cell's length; runaway
  // backtracking, (a+)+$ on a long run of a's that ends in something else,
  // outgrows any such bound (in about a second on a megabyte) and fails with
  // "match limit exceeded".
  static constexpr uint64_t kCellBase = 1'000'000;
  static constexpr uint64_t kVisitsPerUnit = 8;
  // A first, uncounted search shares kCellBase + kFastUnitsPerUnit per code
  // unit among the cell's start positions as the library's own match limit
  // (which it counts per start position); a start position that needs more
  // than its share sends the cell to the counted search, which decides.
  static constexpr uint64_t kFastUnitsPerUnit = 16;
  // The memory of one search. The JIT keeps every pending backtrack on a
  // stack of its own, whose pages are taken as the search reaches them, up to
  // kJitStackMaxBytes; a search that needs more is run again by the
  // interpreter, which keeps them on the heap, in frames of about 160 bytes,
  // up to kHeapLimitKiB (^(a|b)*$ over 100,000 a's needs about 200,000 of
  // them); its depth limit lies beyond what that heap holds, so the heap is
  // what binds. A search that needs more fails with "heap limit exceeded".
  // The library doubles the frames' block as it grows, holding the old one
  // while it copies, so one search takes at most kJitStackMaxBytes plus 1.5
  // times kHeapLimitKiB beyond the cell and the pattern: 64 MiB.
  static constexpr size_t kJitStackStartBytes = 32 * 1024;
  static constexpr size_t kJitStackMaxBytes = 16 * 1024 * 1024;
  static constexpr uint32_t kHeapLimitKiB = 32 * 1024;
  static constexpr uint32_t kDepthLimit = 1'000'000;

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
  // need be). Any failure other than "no match", such as an exceeded cell
  // budget ("match limit exceeded") or memory cap ("heap limit exceeded"),
  // raises ERegexError with the library's message.
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
  // The cell's budget of the counted search.
  uint64_t CellBudget(size_t units) const noexcept;

  std::u16string pattern_;
  bool caseless_;
  bool allowJit_;
  bool jit_ = false;
  uint32_t countedItems_ = 0;  // callout points of countedCode_
  std::unique_ptr<pcre2_real_code_16, CodeDeleter> code_;
  std::unique_ptr<pcre2_real_code_16, CodeDeleter> countedCode_;
  std::unique_ptr<pcre2_real_match_data_16, MatchDataDeleter> matchData_;
  std::unique_ptr<pcre2_real_match_context_16, MatchContextDeleter> matchContext_;
  std::unique_ptr<pcre2_real_jit_stack_16, JitStackDeleter> jitStack_;
};

}  // namespace qm
