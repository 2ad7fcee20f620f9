// Facts about the plug-in's own library file.
#pragma once

#include <string>

namespace qm {

// The full path of the library this code is linked into.
std::u16string OwnModuleFileName();
// The "FileVersion" of the library's version information (empty if absent).
std::u16string OwnFileVersion();

}  // namespace qm
