#include <dlfcn.h>

#include "core/utf.h"
#include "platform/module_info.h"

namespace qm {

std::u16string OwnModuleFileName() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&OwnModuleFileName), &info) == 0 || !info.dli_fname) return {};
  return Utf8ToUtf16(info.dli_fname);
}

// A shared object carries no version resource; the build stamps the same
// four-part version that the Windows build writes into its resource.
std::u16string OwnFileVersion() { return Widen(QMCSV_FILE_VERSION); }

}  // namespace qm
