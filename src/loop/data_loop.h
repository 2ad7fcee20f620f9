// CSV Data Loop: a begin-loop action that visits the rows of the task's table
// passing its conditions, one row per pass, writing the row's number (from 1)
// and its content to host variables.
#pragma once

#include <string>

namespace qm {

class QmTaskBridge;
class Record;
class TQMPluginParams;

// One pass of the loop. The first pass obtains the table, builds the
// conditions and saves the loop in the step's slot; the pass that finds no
// further row (or honours a break) sends the task past the end-loop step and
// frees the loop. Always true once a loop exists; false after reporting when
// the first pass gets no table.
bool ExecDataLoop(QmTaskBridge& task, TQMPluginParams& params);

// Frees the loop saved for the parameter set's step, if any, and clears the
// slot to "0".
void StopDataLoop(const QmTaskBridge& task, const TQMPluginParams& params);

// A row as a compact JSON array of strings: ["a","b c",""]. Quotes,
// backslashes and control characters are escaped; other characters stay as
// they are except unpaired surrogates, which are written as \uXXXX so that
// the text is valid UTF-16 throughout. `scratch` holds a one-byte row's text
// widened.
void AppendRowAsJson(const Record& row, std::u16string& out, std::u16string& scratch);

}  // namespace qm
