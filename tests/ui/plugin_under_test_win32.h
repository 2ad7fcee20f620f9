// qmcsv.dll loaded as the host loads it, with just enough of a host to open
// the configuration editors: an allocator that checks every block's size, a
// variable picker, and the catalogue's configure entry; the beeps the DLL
// sounds are recorded.
#pragma once

#include <optional>
#include <string>

#include "abi/host_abi.h"

namespace qm::test {

class PluginUnderTest {
 public:
  PluginUnderTest();
  ~PluginUnderTest();
  PluginUnderTest(const PluginUnderTest&) = delete;
  PluginUnderTest& operator=(const PluginUnderTest&) = delete;

  // Opens the editor of catalogue `index` on `block`: the block it returns
  // (each line ending in CR LF), or nothing when the user cancelled. The
  // editor starts with no beep heard (test::LastBeep).
  std::optional<std::u16string> Configure(int32_t index, const std::u16string& block);
  // The text the variable picker answers with.
  static void SetPickedVariable(std::u16string text);
  // The scale the host window answers (100 to 250).
  static void SetScale(int percent);
  static int Scale();

 private:
  void* library_ = nullptr;
  TAFPluginInfo* info_ = nullptr;
};

}  // namespace qm::test
