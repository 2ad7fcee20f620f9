#include "table/csv_target_settings.h"

#include "plugin/host_services.h"
#include "plugin/param_parser.h"

namespace qm {

TCSVTargetSettings ReadTargetSettings(const TQMParamParser& params) {
  TCSVTargetSettings s;
  if (params.GetBoolDef(u"savetovariable", false)) s.VarName = ExpandVariables(params.GetString(u"savevariable"));
  if (params.GetBoolDef(u"savetofile", false)) s.FileName = ExpandVariables(params.GetString(u"targetfilename"));
  s.Encoding = EncodingFromIndex(params.GetIntegerDef(u"targetencoding", 0));
  s.KeepFormat = params.GetBoolDef(u"notchangeformat", true) ? -1 : 0;
  return s;
}

}  // namespace qm
