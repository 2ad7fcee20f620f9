// The system's file chooser for the file-name fields of the editors.
#pragma once

#include <windows.h>

#include <string_view>

namespace qm::ui {

struct FileChoice {
  std::u16string_view filter;     // "Name|*.ext|Name|*.ext"
  std::u16string_view title;      // empty: the system's own
  std::u16string_view extension;  // added to a name typed without one (saving)
  bool save = false;              // a file to write (asks before replacing one)
};

// Opens the chooser on the field's text; a chosen name replaces the text.
void ChooseFileInto(HWND owner, HWND field, const FileChoice& choice);

}  // namespace qm::ui
