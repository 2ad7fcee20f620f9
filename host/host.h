// The host side of the boundary: the TAFAppInfo record with every callback,
// host variables with {name} expansion, and what the plug-in reports.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "abi/host_abi.h"

namespace qmhost {

struct HostOptions {
  std::u16string version = u"9.5.0.1";
  bool quiet = false;         // print only the task's print lines and the outcome
  bool traceExpand = false;   // print every ExpandText call
  bool time = false;          // each step's wall time and the total
  bool refuseBridge = false;  // the task interface refuses IQmTaskBridge
  std::u16string selectedVariable = u"{picked}";
  // Rewrites every expansion result before the plug-in sees it (a test host
  // keeps file names inside its own folder this way); none in qmhost.
  void (*expansionFilter)(std::u16string& text) = nullptr;
};

// Host variable names compare without regard to ASCII letter case.
struct NameLess {
  bool operator()(const std::u16string& a, const std::u16string& b) const;
};

class Host {
 public:
  static Host& Instance();

  HostOptions options;
  std::map<std::u16string, std::u16string, NameLess> variables;
  // The last error the plug-in reported, for the failure summary.
  uint32_t lastErrorCode = 0;
  std::u16string lastErrorText;
  bool lastErrorSet = false;

  TAFAppInfo MakeAppInfo();
  std::u16string Expand(std::u16string_view text) const;
  void Event(const std::string& line) const;

 private:
  std::u16string version_;
};

}  // namespace qmhost
