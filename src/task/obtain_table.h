// The routine every table action uses first: the task's table for this step,
// taken from the previous step or loaded from the step's file or text.
#pragma once

#include <cstdint>
#include <string>

namespace qm {

class QmTaskBridge;
class TQMParamParser;
class TSimpleCSVDataClass;

// Codes of ObtainJobTable.
enum : uint32_t { kObtainNoTable = 1, kObtainFileFailed = 2, kObtainTextFailed = 3 };

// The task's table for this step: the attached one for "Prev. CSV action",
// else a table attached at once (created when the task has none) and loaded
// from the file or text. False with a code and message on failure.
bool ObtainJobTable(const QmTaskBridge& task, const TQMParamParser& params, TSimpleCSVDataClass*& table, uint32_t& code,
                    std::u16string& message);

// The same, reporting a failure (codes 1, 2 or 3) and answering null.
TSimpleCSVDataClass* ObtainTableOrReport(const QmTaskBridge& task, const TQMParamParser& params);

}  // namespace qm
