// The parameter set every action routine and dialog receives, and the helper
// with which a dialog declares the host variables its step will create.
#pragma once

#include <string>
#include <vector>

#include "boundary/param_parser.h"
#include "core/step_keys.h"

namespace qm {

class TQMPluginParams : public TQMParamParser {
 public:
  using TQMParamParser::TQMParamParser;

  // Hands the block back to the host in a fresh block from its allocator,
  // returning the old one first. Raises when the kind of set does not match.
  void ToActionParams(TAFActionParams& params) const;
  void ToEventParams(TAFEventParams& params) const;
};

class TProducedVariables {
 public:
  // Adds a trimmed name; false when nothing is left after trimming. A name
  // already present (in any letter case) is not added twice.
  bool AddVarName(std::u16string_view name);
  // The names in sorted order as comma text.
  std::u16string GetVariables() const;
  virtual std::u16string ParameterName() const { return std::u16string(keys::kVariablesProduced.name); }
  virtual ~TProducedVariables() = default;

 private:
  std::vector<std::u16string> names_;
};

}  // namespace qm
