// What every table action shares: obtaining the task's table and reporting
// a failure.
#pragma once

#include <cstdint>
#include <string_view>

namespace qm {

class QmTaskBridge;
class TQMParamParser;
class TSimpleCSVDataClass;

// Reports a failure: the task's last error with its code (and the lines in
// the general log), then each non-empty line in the task's log as an error.
void ReportFailure(const QmTaskBridge& task, uint32_t code, std::u16string_view message);

// The task's table as the step's source settings say (the attached table, a
// file or typed text); null after reporting codes 1, 2 or 3.
TSimpleCSVDataClass* ObtainTableOrReport(const QmTaskBridge& task, const TQMParamParser& params);

}  // namespace qm
