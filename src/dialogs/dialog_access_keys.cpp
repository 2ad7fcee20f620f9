#include "dialogs/dialog_access_keys.h"

#include <algorithm>

#include "dialogs/access_keys.h"

namespace qm {

std::vector<std::u16string> AssignAccessKeys(DialogCaptions& dialog) {
  const size_t pageCount = std::max<size_t>(1, dialog.pages.size());
  auto onPage = [&](const DialogCaption& control, size_t page) {
    return control.page < 0 ? dialog.pages.empty() : static_cast<size_t>(control.page) == page;
  };
  // The keys the captions carry themselves: a control's on its page (one on
  // every page on each), and all of them anywhere.
  std::u16string givenAnywhere;
  std::vector<std::u16string> givenOnPage(pageCount);
  for (const auto& control : dialog.controls) {
    const char16_t key = AccessKeys::KeyOf(control.text);
    if (!key) continue;
    givenAnywhere += key;
    for (size_t page = 0; page < pageCount; ++page) {
      if (control.page < 0 || static_cast<size_t>(control.page) == page) givenOnPage[page] += key;
    }
  }
  for (const auto& title : dialog.pages) {
    if (const char16_t key = AccessKeys::KeyOf(title)) givenAnywhere += key;
  }
  AccessKeys shared(givenAnywhere);
  for (auto& title : dialog.pages) title = shared.Assign(title);
  for (auto& control : dialog.controls) {
    if (control.role == CaptionRole::EveryPage) control.text = shared.Assign(control.text);
  }
  const std::u16string onEveryPage = shared.Taken().substr(givenAnywhere.size());
  std::vector<std::u16string> pageKeys(pageCount);
  for (size_t page = 0; page < pageCount; ++page) {
    AccessKeys keys(onEveryPage + givenOnPage[page]);
    for (size_t i = 0; i < dialog.controls.size(); ++i) {
      auto& control = dialog.controls[i];
      if (!onPage(control, page)) continue;
      const bool namesNext = i + 1 < dialog.controls.size() && dialog.controls[i + 1].role != CaptionRole::Label &&
                             dialog.controls[i + 1].tabStop;
      if (control.role == CaptionRole::Button || (control.role == CaptionRole::Label && namesNext)) {
        control.text = keys.Assign(control.text);
      }
    }
    pageKeys[page] = keys.Taken();
  }
  return pageKeys;
}

std::u16string RekeyLabel(std::u16string& pageKeys, std::u16string_view oldText, std::u16string_view newText) {
  if (const char16_t key = AccessKeys::KeyOf(oldText)) {
    const auto at = pageKeys.rfind(key);
    if (at != std::u16string::npos) pageKeys.erase(at, 1);
  }
  AccessKeys keys(pageKeys);
  std::u16string given = keys.Assign(newText);
  pageKeys = keys.Taken();
  return given;
}

}  // namespace qm
