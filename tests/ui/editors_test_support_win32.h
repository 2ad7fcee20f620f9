// What the editors' tests share: qmcsv.dll loaded once, the catalogue
// indices of the editors, the test fixture, screenshots of pages and states,
// the block a model writes, and an editor opened, shot, driven and confirmed
// at 100% and 150%. Each editors_*_test.cpp drives one family of editors.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "boundary/param_parser.h"
#include "core/action_catalogue.h"
#include "plugin_under_test_win32.h"
#include "ui/placement_store_win32.h"
#include "ui_driver_win32.h"

namespace qm::test {

constexpr int32_t kOpenDataIndex = CatalogueIndex(Action::OpenData);
constexpr int32_t kInformationIndex = CatalogueIndex(Action::DataInformation);
constexpr int32_t kAddColumnIndex = CatalogueIndex(Action::AddColumn);
constexpr int32_t kRemoveColumnsIndex = CatalogueIndex(Action::RemoveColumns);
constexpr int32_t kSortIndex = CatalogueIndex(Action::SortByColumn);
constexpr int32_t kMoveColumnIndex = CatalogueIndex(Action::MoveColumn);
constexpr int32_t kReadCellsIndex = CatalogueIndex(Action::ReadCells);
constexpr int32_t kWriteCellsIndex = CatalogueIndex(Action::WriteCells);
constexpr int32_t kMergeIndex = CatalogueIndex(Action::MergeData);
constexpr int32_t kFilterDataIndex = CatalogueIndex(Action::FilterData);
constexpr int32_t kDataLoopIndex = CatalogueIndex(Action::DataLoop);
constexpr int32_t kRemoveDuplicatesIndex = CatalogueIndex(Action::RemoveDuplicates);
constexpr int32_t kSaveDataIndex = CatalogueIndex(Action::SaveData);

// qmcsv.dll, loaded on first use and kept for the whole run.
PluginUnderTest& Plugin();

// Every test starts from the default placements, and the families of
// tests run in their order (tests/ui/CMakeLists.txt says why).
class Editors : public ::testing::Test {
 protected:
  void SetUp() override;
};

// The path of screenshot `name` in $QMCSV_SCREENSHOTS (the build tree's
// screenshots/ under CTest).
std::string ScreenshotPath(const std::string& name);
// Shots of every visible tab page of the dialog, named <stem>_<page>.
void ShootPages(HWND dialog, const std::string& stem, int pages);
// The shot of a state of the editor, named <name>_<scale>.
void ShootState(HWND dialog, const std::string& name);

// The block the editor's model writes for these settings, made on `from`.
template <class Model, class Set>
std::u16string ModelBlock(Set&& set, std::u16string_view from = {}) {
  Model model;
  model.Load(TQMParamParser(from));
  set(model);
  TQMParamParser block;
  model.Save(block);
  return block.Text();
}

// Opens the editor of `index` on `block` at 100% and 150%, shoots its first
// `pages` pages as <stem>_<scale>_<page>, runs `script` on its window and
// expects the block the model writes after `set`.
template <class Model, class Set>
void ExpectEditorWrites(int32_t index, const std::u16string& block, const std::wstring& caption,
                        const std::string& stem, int pages, const std::function<void(HWND)>& script, Set&& set) {
  for (int scale : {100, 150}) {
    PluginUnderTest::SetScale(scale);
    std::optional<std::u16string> written;
    DriveDialog([&] { written = Plugin().Configure(index, block); },
                [&] {
                  HWND w = WaitForWindow(caption);
                  ASSERT_TRUE(w);
                  ShootPages(w, stem + "_" + std::to_string(scale), pages);
                  script(w);
                  Press(w, VK_RETURN);
                  EXPECT_TRUE(WaitUntilClosed(w));
                });
    ASSERT_TRUE(written) << scale;
    EXPECT_EQ(*written, ModelBlock<Model>(set)) << scale;
  }
  PluginUnderTest::SetScale(100);
}

// A model's label as the driver finds it: without "&" and trailing blanks.
HWND Labelled(HWND dialog, std::u16string_view label);

// The balloon a refused OK shows for the model's failed check of a new step.
template <class Model>
std::wstring CheckMessage() {
  const auto failure = Model().Check();
  return failure ? std::wstring(failure->message.begin(), failure->message.end()) : std::wstring();
}

// The captions of the dialog's tab pages, and their number.
std::vector<std::wstring> TabCaptions(HWND dialog);
inline int TabCount(HWND dialog) { return static_cast<int>(TabCaptions(dialog).size()); }
// The access key of a caption (upper case), or 0.
wchar_t KeyOf(const std::wstring& text);
// A text for a failure message.
std::string Narrow(const std::wstring& text);

}  // namespace qm::test
