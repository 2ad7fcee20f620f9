// Reading a step's stored condition list (conditionmode, conditionscount,
// condition00000000...) the way the loop and filter actions do at run time.
#pragma once

#include <cstdint>
#include <string>

#include "loop/record_filter.h"
#include "boundary/host_services.h"
#include "boundary/param_parser.h"
#include "core/step_keys.h"

namespace qm {

// Hands each stored condition line to `add`, in order, after expanding its
// {variable} references. The whole line is expanded before it is split, so a
// variable may supply several fields at once. A missing key reads as the
// empty line, which `add` rejects like any other bad column.
template <typename Add>
void ForEachStoredCondition(const TQMParamParser& params, Add&& add) {
  const int32_t count = params.GetInteger(keys::kConditionsCount);
  for (int32_t i = 0; i < count; ++i) add(ExpandVariables(params.GetString(keys::kCondition, i)));
}

}  // namespace qm
