// Whole tasks in-process: random parameter blocks go through the plug-in's
// catalogue and dispatcher to every executor, as the host calls them, with the
// task's "$CSV_OBJECT$" absent, empty, "0", not a number, a real table, or a
// forged number.
//
// The input after its first byte is UTF-8 text: a line "[N]" (N = catalogue
// index, taken modulo 13) or "[end]" (a loop's end step) starts a step, the
// lines up to the next one are its block. Steps run in order; a step that
// sets the next step (a loop) is followed there, up to 256 steps in all, and
// every action step gets its job stop at the end. The plug-in's own errors
// (QmError) may leave a step, as the host catches them; anything else is a fault. Every expanded text has its
// "/" and "\" replaced, so files stay in the target's own folder.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "core/action_catalogue.h"
#include "core/errors.h"
#include "core/utf.h"
#include "fuzz_input.h"
#include "fake_task.h"
#include "host.h"

namespace {

constexpr int32_t kActionCount = qm::kActionCount;
constexpr int32_t kDataLoopIndex = qm::CatalogueIndex(qm::Action::DataLoop);
constexpr int32_t kEndStep = -1;

struct Step {
  int32_t index;
  std::u16string block;
};

std::vector<Step> ParseSteps(std::u16string_view text) {
  std::vector<Step> steps;
  size_t start = 0;
  while (start <= text.size() && steps.size() < 64) {
    size_t end = text.find(u'\n', start);
    if (end == std::u16string_view::npos) end = text.size();
    const std::u16string_view line = text.substr(start, end - start);
    if (line.size() >= 3 && line.front() == u'[' && line.back() == u']') {
      const std::u16string_view name = line.substr(1, line.size() - 2);
      int32_t index = 0;
      for (char16_t c : name) index = (index * 10 + (c - u'0')) & 0xFFFF;
      steps.push_back({name == u"end" ? kEndStep : index % kActionCount, {}});
    } else if (!steps.empty()) {
      steps.back().block.append(line).append(u"\r\n");
    }
    start = end + 1;
  }
  return steps;
}

void KeepInFolder(std::u16string& text) {
  for (char16_t& c : text) {
    if (c == u'/' || c == u'\\') c = u'_';
  }
}

std::filesystem::path& Folder() {
  static std::filesystem::path folder;
  return folder;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // The test runner points TMPDIR at the test's own folder.
  std::string name = (std::filesystem::temp_directory_path() / "qmcsv-fuzz-task-XXXXXX").string();
  if (!mkdtemp(name.data()) || chdir(name.c_str()) != 0) std::abort();
  Folder() = name;
  qmhost::Host::Instance().options.expansionFilter = &KeepInFolder;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  for (const auto& entry : std::filesystem::directory_iterator(Folder())) std::filesystem::remove_all(entry.path());
  qmhost::Host::Instance().variables.clear();
  qm::test::TakeTranscript();

  qm::fuzz::Input input(data, size);
  const uint8_t identity = input.Byte();
  std::vector<Step> steps = ParseSteps(qm::Utf8ToUtf16(input.Rest()));
  if (steps.empty()) return 0;

  std::vector<int32_t> types;
  for (const Step& step : steps)
    types.push_back(step.index == kEndStep ? atEndLoop : step.index == kDataLoopIndex ? atBeginLoop : atSimple);
  qm::test::FakeTask task(types, 1 + (identity >> 4));

  std::u16string forged;
  switch (identity % 6) {
    case 0: break;
    case 1: task.privateVariables[u"$CSV_OBJECT$"] = u""; break;
    case 2: task.privateVariables[u"$CSV_OBJECT$"] = u"0"; break;
    case 3: task.privateVariables[u"$CSV_OBJECT$"] = u"-12x"; break;
    case 4: task.Exec(0, 0, u"source=2\r\nlinecount=2\r\nline00000000=a;b;c\r\nline00000001=1;2;3\r\n"); break;
    case 5:
      forged = u"4096";
      task.privateVariables[u"$CSV_OBJECT$"] = forged;
      break;
  }

  int32_t pc = 0;
  for (int budget = 256; budget > 0 && pc >= 0 && pc < static_cast<int32_t>(steps.size()); --budget) {
    const Step& step = steps[static_cast<size_t>(pc)];
    if (step.index == kEndStep) {
      // The host goes back to the loop's begin step, or on when there is none.
      int32_t begin = pc - 1;
      while (begin >= 0 && types[static_cast<size_t>(begin)] != atBeginLoop) --begin;
      pc = begin >= 0 ? begin : pc + 1;
      continue;
    }
    task.nextStep = -1;
    try {
      task.Exec(step.index, pc, step.block);
    } catch (const qm::QmError&) {
      // The plug-in's own errors may leave a step; the host reports them.
    }
    pc = task.nextStep >= 0 ? task.nextStep : pc + 1;
  }
  for (size_t k = 0; k < steps.size(); ++k) {
    if (steps[k].index != kEndStep) task.JobStop(steps[k].index, static_cast<int32_t>(k));
  }
  // A forged identity that is still there is no table to free.
  const auto attached = task.privateVariables.find(u"$CSV_OBJECT$");
  if (!forged.empty() && attached != task.privateVariables.end() && attached->second == forged)
    task.privateVariables.erase(attached);
  return 0;
}
