// "CSV Move Column": the column to move and where to, then the source pages.
#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "dialogs/move_column_editor.h"
#include "ui/editors.h"
#include "ui/sourced_dialog_win32.h"
#include "ui/text_win32.h"
#include "ui/run_editor_win32.h"

namespace qm::ui {

namespace {

enum : int { kFrom = 10, kTo };

class MoveColumnDialog final : public SourcedDialog {
 public:
  MoveColumnDialog(MoveColumnEditor& model, int scale)
      : SourcedDialog(MoveColumnEditor::kCaption, L"TCSVmoveColumnForm", model.pages, scale), m_(model) {}

 private:
  void BuildGeneral(Box a) override {
    Label(Wide(MoveColumnEditor::kFromLabel).c_str(), Box{a.x, a.y + 3, 170, 18});
    from_ = Edit(Box{a.x + 180, a.y, 100, 23}, kFrom, 0);
    Label(Wide(MoveColumnEditor::kToLabel).c_str(), Box{a.x, a.y + 35, 170, 18});
    to_ = Edit(Box{a.x + 180, a.y + 32, 100, 23}, kTo, 0);
  }
  void FillGeneral() override {
    SetText(from_, Wide(m_.from));
    SetText(to_, Wide(m_.to));
  }
  void ReadGeneral() override {
    m_.from = Utf16(TextOf(from_));
    m_.to = Utf16(TextOf(to_));
  }
  bool Confirm() override {
    ReadAll();
    if (const auto failure = m_.Check()) {
      Report<MoveColumnControl>(*failure,
                                [this](MoveColumnControl c) { return c == MoveColumnControl::To ? to_ : from_; });
      return false;
    }
    return true;
  }

  MoveColumnEditor& m_;
  HWND from_ = nullptr, to_ = nullptr;
};

}  // namespace

bool ConfigureMoveColumn(TQMPluginParams& params) { return RunEditor<MoveColumnDialog>(params, MoveColumnEditor()); }

}  // namespace qm::ui
