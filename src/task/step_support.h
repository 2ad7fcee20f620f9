// What every step of this plug-in shares: reporting a failure, and reading
// the step's texts and numbers the way the executors need them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qm {

class QmTaskBridge;
class TQMParamParser;

namespace keys {
struct StepKey;
}

// Reports a failure: the task's last error with its code (and the lines in
// the general log), then each non-empty line in the task's log as an error.
void ReportFailure(const QmTaskBridge& task, uint32_t code, std::u16string_view message);

// The key's text (its declared default when absent) with its {variable}
// references expanded (the host is asked only when the text holds a "{");
// `index` names the entry of an indexed key.
std::u16string ReadExpanded(const TQMParamParser& params, const keys::StepKey& key);
std::u16string ReadExpanded(const TQMParamParser& params, const keys::StepKey& key, int32_t index);
// The same without a copy when the text holds no reference: a view of the
// block, or of `room` holding the expanded text.
std::u16string_view ReadExpandedView(const TQMParamParser& params, const keys::StepKey& key, std::u16string& room);

// A number typed by the user, counted from 1, as the table's index counted
// from 0. Wraps around like the host's 32-bit integers, so no input can
// overflow; a wrapped index is simply one outside the table's columns.
constexpr int32_t ToTableIndex(int32_t number) { return static_cast<int32_t>(static_cast<uint32_t>(number) - 1u); }

}  // namespace qm
