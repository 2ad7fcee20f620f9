#include "loop/regex.h"

#define PCRE2_CODE_UNIT_WIDTH 16
#include <pcre2.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

#include "core/convert.h"
#include "core/errors.h"
#include "core/messages.h"

namespace qm {

namespace {

static_assert(sizeof(PCRE2_UCHAR) == sizeof(char16_t));

std::u16string LibraryMessage(int errorCode) {
  PCRE2_UCHAR buffer[256];
  const int length = pcre2_get_error_message(errorCode, buffer, sizeof buffer / sizeof buffer[0]);
  if (length < 0) return Format(msg::kRegexUnknownError, {IntToStr(errorCode)});
  return std::u16string(reinterpret_cast<const char16_t*>(buffer), static_cast<size_t>(length));
}

[[noreturn]] void RaiseLibraryError(int errorCode) { throw ERegexError(LibraryMessage(errorCode)); }

// UTF semantics, and case-insensitive matching when asked; nothing else, so
// a stored pattern means what it means in Perl: no multi-line, dot-all,
// extended or anchored mode. Cells may hold invalid UTF-16 (a lone surrogate
// from a file or a variable). Plain UTF mode would reject such a subject with
// a UTF error, and skipping the check would be undefined behaviour;
// PCRE2_MATCH_INVALID_UTF instead lets the search run and simply never
// matches a character across the broken unit. It changes nothing for valid
// text, and it spares the per-cell validity scan that plain UTF mode runs.
uint32_t CompileOptions(bool caseless) {
  uint32_t options = PCRE2_UTF | PCRE2_MATCH_INVALID_UTF;
  if (caseless) options |= PCRE2_CASELESS;
  return options;
}

// The callout of the counted search: one unit of the cell's budget per item
// reached; an empty budget ends the search as the match limit does.
int CountWork(pcre2_callout_block*, void* budget) {
  auto& left = *static_cast<uint64_t*>(budget);
  if (left == 0) return PCRE2_ERROR_MATCHLIMIT;
  --left;
  return 0;
}

}  // namespace

void Regex::CodeDeleter::operator()(pcre2_code* p) const noexcept { pcre2_code_free(p); }
void Regex::MatchDataDeleter::operator()(pcre2_match_data* p) const noexcept { pcre2_match_data_free(p); }
void Regex::MatchContextDeleter::operator()(pcre2_match_context* p) const noexcept { pcre2_match_context_free(p); }
void Regex::JitStackDeleter::operator()(pcre2_jit_stack* p) const noexcept { pcre2_jit_stack_free(p); }

Regex::Regex(std::u16string pattern, bool caseless, bool allowJit)
    : pattern_(std::move(pattern)), caseless_(caseless), allowJit_(allowJit) {}

Regex::~Regex() = default;

bool Regex::JitAvailable() noexcept {
  uint32_t jit = 0;
  return pcre2_config(PCRE2_CONFIG_JIT, &jit) >= 0 && jit != 0;
}

void Regex::Compile() {
  if (code_) return;

  const uint32_t options = CompileOptions(caseless_);

  int errorCode = 0;
  PCRE2_SIZE errorOffset = 0;
  std::unique_ptr<pcre2_code, CodeDeleter> code(pcre2_compile(
      reinterpret_cast<PCRE2_SPTR>(pattern_.data()), pattern_.size(), options, &errorCode, &errorOffset, nullptr));
  if (!code) {
    throw ERegexError(Format(msg::kRegexErrorAtOffset, {LibraryMessage(errorCode), UIntToStr(errorOffset)}));
  }

  std::unique_ptr<pcre2_match_context, MatchContextDeleter> context(pcre2_match_context_create(nullptr));
  // One pair is all a yes/no search needs; more capture groups only make the
  // result 0 ("vector too small"), which still means a match.
  std::unique_ptr<pcre2_match_data, MatchDataDeleter> matchData(pcre2_match_data_create(1, nullptr));
  if (!context || !matchData) throw std::bad_alloc();
  pcre2_set_depth_limit(context.get(), kDepthLimit);
  pcre2_set_heap_limit(context.get(), kHeapLimitKiB);

  // The JIT is an optimisation only: when the library lacks it or refuses the
  // pattern, the interpreter gives the same answers, more slowly. It honours
  // the match limit too. Its default stack (32 KiB of machine stack) is small
  // for patterns that backtrack deeply, so it gets a stack of its own, whose
  // pages are only taken as the search reaches them.
  bool jit = false;
  std::unique_ptr<pcre2_jit_stack, JitStackDeleter> jitStack;
  if (allowJit_ && JitAvailable() && pcre2_jit_compile(code.get(), PCRE2_JIT_COMPLETE) == 0) {
    jit = true;
    jitStack.reset(pcre2_jit_stack_create(kJitStackStartBytes, kJitStackMaxBytes, nullptr));
    if (jitStack) pcre2_jit_stack_assign(context.get(), nullptr, jitStack.get());
  }

  code_ = std::move(code);
  matchContext_ = std::move(context);
  matchData_ = std::move(matchData);
  jitStack_ = std::move(jitStack);
  jit_ = jit;
}

void Regex::CompileCounted() {
  if (countedCode_) return;
  int errorCode = 0;
  PCRE2_SIZE errorOffset = 0;
  // The plain pattern compiled, so this one compiles too.
  countedCode_.reset(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern_.data()), pattern_.size(),
                                   CompileOptions(caseless_) | PCRE2_AUTO_CALLOUT, &errorCode, &errorOffset, nullptr));
  if (!countedCode_) RaiseLibraryError(errorCode);
  if (jit_) pcre2_jit_compile(countedCode_.get(), PCRE2_JIT_COMPLETE);
  countedItems_ = 0;
  pcre2_callout_enumerate(
      countedCode_.get(),
      [](pcre2_callout_enumerate_block*, void* items) {
        ++*static_cast<uint32_t*>(items);
        return 0;
      },
      &countedItems_);
}

uint64_t Regex::CellBudget(size_t units) const noexcept {
  return kCellBase + kVisitsPerUnit * uint64_t{countedItems_} * units;
}

int Regex::MatchCounted(std::u16string_view subject, const char16_t* text) {
  CompileCounted();
  uint64_t budget = CellBudget(subject.size());
  // The callout decides; the library's own limit only stays out of its way.
  pcre2_set_match_limit(matchContext_.get(), UINT32_MAX);
  pcre2_set_callout(matchContext_.get(), &CountWork, &budget);
  int rc = pcre2_match(countedCode_.get(), reinterpret_cast<PCRE2_SPTR>(text), subject.size(), 0, 0, matchData_.get(),
                       matchContext_.get());
  if (rc == PCRE2_ERROR_JIT_STACKLIMIT) {
    // The rest of the same budget for the interpreter (see Search).
    rc = pcre2_match(countedCode_.get(), reinterpret_cast<PCRE2_SPTR>(text), subject.size(), 0, PCRE2_NO_JIT,
                     matchData_.get(), matchContext_.get());
  }
  pcre2_set_callout(matchContext_.get(), nullptr, nullptr);
  return rc;
}

bool Regex::Search(std::u16string_view subject) {
  if (!code_) Compile();
  // An empty view may carry no pointer; the library wants one even for length 0.
  static constexpr char16_t kEmpty[1] = {0};
  const char16_t* text = subject.data() ? subject.data() : kEmpty;
  // The fast search: a budget that grows with the cell, shared among its
  // start positions, so that however many there are, the cell's work stays
  // bounded.
  const uint64_t units = subject.size();
  const uint64_t share = (kCellBase + kFastUnitsPerUnit * units) / (units + 1);
  pcre2_set_match_limit(matchContext_.get(), static_cast<uint32_t>(std::min<uint64_t>(share, UINT32_MAX)));
  int rc = pcre2_match(code_.get(), reinterpret_cast<PCRE2_SPTR>(text), subject.size(), 0, 0, matchData_.get(),
                       matchContext_.get());
  // A start position that needs more than its share, or more stack than the
  // JIT has (it keeps every pending backtrack on its own stack, where the
  // interpreter uses the heap): the counted search decides, with the work of
  // the whole cell bounded instead.
  if (rc == PCRE2_ERROR_MATCHLIMIT || rc == PCRE2_ERROR_JIT_STACKLIMIT) rc = MatchCounted(subject, text);
  if (rc >= 0) return true;
  if (rc == PCRE2_ERROR_NOMATCH) return false;
  RaiseLibraryError(rc);
}

}  // namespace qm
