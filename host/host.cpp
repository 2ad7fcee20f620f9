#include "host.h"

#include <cstring>

#include "host_memory.h"
#include "transcript.h"

namespace qmhost {

namespace {

char16_t Fold(char16_t c) { return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 32) : c; }

void InfoOut(int32_t infoType, const char16_t* text) {
  Host& host = Host::Instance();
  // A step's failure goes to the host's error and its log: one text is enough.
  const bool repeated = host.lastErrorSet && host.lastErrorText == Z(text);
  host.Event("  log host " + std::string(LevelName(infoType)) + ": " +
             (repeated ? std::string("the last error's text") : Quote(Z(text))));
}

void GetMemory(void** p, int32_t size) { *p = Memory().Allocate(size); }

void FreeMemory(void** p, int32_t size) {
  Memory().Free(*p, size);
  *p = nullptr;
}

void ExpandText(const char16_t* source, char16_t* buf, int32_t* bufSize, LongBool* error) {
  Host& host = Host::Instance();
  std::u16string result = host.Expand(Z(source));
  if (host.options.expansionFilter) host.options.expansionFilter(result);
  const auto needed = static_cast<int32_t>((result.size() + 1) * sizeof(char16_t));
  const bool fits = needed <= *bufSize;
  if (host.options.traceExpand) {
    host.Event("  expand " + Quote(Z(source)) + " into " + std::to_string(*bufSize) +
               " bytes: " + (fits ? "gives " + QuoteValue(result) : "needs " + std::to_string(needed)));
  }
  if (!fits) {
    *bufSize = needed;
    *error = kLongTrue;
    return;
  }
  std::memcpy(buf, result.c_str(), static_cast<size_t>(needed));
  *bufSize = needed;
  *error = kLongFalse;
}

LongBool SelectVar(char16_t* buf, int32_t bufSize) {
  const std::u16string& picked = Host::Instance().options.selectedVariable;
  const size_t n = std::min(picked.size(), static_cast<size_t>(bufSize > 0 ? bufSize - 1 : 0));
  std::memcpy(buf, picked.data(), n * sizeof(char16_t));
  buf[n] = 0;
  return kLongTrue;
}

void SetUserVar(const char16_t* name, const char16_t* value) {
  Host& host = Host::Instance();
  host.variables[std::u16string(Z(name))] = std::u16string(Z(value));
  // Quoting converts the whole value: not worth it for a line nobody sees.
  if (!host.options.quiet) host.Event("  set " + Quote(Z(name)) + " = " + QuoteValue(Z(value)));
}

void PluginAbout(void* icon, const char16_t* title, const char16_t* addon, int32_t pluginId) {
  Print("about: icon " + std::string(icon ? "set" : "none") + ", title " + Quote(Z(title)) + ", addon " +
        Quote(Z(addon)) + ", plug-in " + std::to_string(pluginId));
}

void SetLastError(int32_t taskId, uint32_t code, const char16_t* text) {
  Host& host = Host::Instance();
  host.lastErrorSet = true;
  host.lastErrorCode = code;
  host.lastErrorText = Z(text);
  host.Event("  last error " + std::to_string(code) + " (task " + std::to_string(taskId) + "): " + Quote(Z(text)));
}

}  // namespace

bool NameLess::operator()(const std::u16string& a, const std::u16string& b) const {
  const size_t n = std::min(a.size(), b.size());
  for (size_t i = 0; i < n; ++i) {
    if (Fold(a[i]) != Fold(b[i])) return Fold(a[i]) < Fold(b[i]);
  }
  return a.size() < b.size();
}

Host& Host::Instance() {
  static Host host;
  return host;
}

TAFAppInfo Host::MakeAppInfo() {
  version_ = options.version;
  TAFAppInfo app;
  std::memset(&app, 0, sizeof app);
  app.Ver = version_.c_str();
  app.WHandle = nullptr;  // no window: the plug-in keeps its defaults
  app.InfoOut = &InfoOut;
  app.QMGetMemory = &GetMemory;
  app.QMFreeMemory = &FreeMemory;
  app.ExpandText = &ExpandText;
  app.SelectVar = &SelectVar;
  app.SetUserVar = &SetUserVar;
  app.AddUserVar = &SetUserVar;
  app.PluginAbout = &PluginAbout;
  app.SetLastError = &SetLastError;
  return app;
}

std::u16string Host::Expand(std::u16string_view text) const {
  std::u16string out;
  size_t i = 0;
  while (i < text.size()) {
    const size_t open = text.find(u'{', i);
    if (open == std::u16string_view::npos) break;
    const size_t close = text.find(u'}', open + 1);
    if (close == std::u16string_view::npos) break;
    out.append(text.substr(i, open - i));
    const auto found = variables.find(std::u16string(text.substr(open + 1, close - open - 1)));
    if (found != variables.end()) {
      out += found->second;
    } else {
      out.append(text.substr(open, close - open + 1));  // unknown references stay as written
    }
    i = close + 1;
  }
  out.append(text.substr(i));
  return out;
}

void Host::Event(const std::string& line) const {
  if (!options.quiet) Print(line);
}

}  // namespace qmhost
