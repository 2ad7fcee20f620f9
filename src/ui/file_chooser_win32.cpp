#include "ui/file_chooser_win32.h"

#include <commdlg.h>

#include <string>

#include "ui/dialog_window_win32.h"
#include "ui/text_win32.h"

namespace qm::ui {

void ChooseFileInto(HWND owner, HWND field, const FileChoice& choice) {
  // The filter as the chooser wants it: pairs separated by zeros.
  std::wstring filter = Wide(choice.filter);
  for (auto& ch : filter) {
    if (ch == L'|') ch = L'\0';
  }
  filter.push_back(L'\0');
  std::wstring file = DialogWindow::TextOf(field);
  file.resize(MAX_PATH * 4, L'\0');
  const std::wstring title = Wide(choice.title);
  const std::wstring extension = Wide(choice.extension);
  OPENFILENAMEW request{};
  request.lStructSize = sizeof request;
  request.hwndOwner = owner;
  request.lpstrFilter = filter.c_str();
  request.lpstrFile = file.data();
  request.nMaxFile = static_cast<DWORD>(file.size());
  request.lpstrTitle = title.empty() ? nullptr : title.c_str();
  request.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
  request.Flags = OFN_HIDEREADONLY | OFN_NOCHANGEDIR | (choice.save ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
  const BOOL chosen = choice.save ? GetSaveFileNameW(&request) : GetOpenFileNameW(&request);
  if (chosen) DialogWindow::SetText(field, file.c_str());
}

}  // namespace qm::ui
