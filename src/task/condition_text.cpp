#include "task/condition_text.h"

#include <vector>

#include "core/convert.h"
#include "core/delimited_text.h"

namespace qm {

ConditionFields SplitCondition(std::u16string_view line) {
  std::vector<std::u16string> cells = SplitDelimited(line, kCommaText);
  cells.resize(4);
  ConditionFields fields;
  fields.column = std::move(cells[0]);
  fields.expression = std::move(cells[1]);
  fields.caseSensitive = StrToIntDef(cells[2], 0) != 0;
  fields.regex = StrToIntDef(cells[3], 0) != 0;
  return fields;
}

std::u16string JoinCondition(const ConditionFields& fields) {
  return JoinDelimited(
      {fields.column, fields.expression, fields.caseSensitive ? u"1" : u"0", fields.regex ? u"1" : u"0"}, kCommaText);
}

}  // namespace qm
