// "CSV Filter Data": which rows to delete and the conditions, then the
// source pages.
#include "boundary/host_services.h"
#include "boundary/plugin_params.h"
#include "dialogs/filter_data_editor.h"
#include "ui/condition_list_view_win32.h"
#include "ui/editors.h"
#include "ui/run_editor_win32.h"
#include "ui/text_win32.h"

namespace qm::ui {

namespace {

enum : int { kDeleteFailing = 10, kDeleteMatching, kConditions };

class FilterDataDialog final : public ConditionsDialog {
 public:
  FilterDataDialog(FilterDataEditor& model, int scale)
      : ConditionsDialog(FilterDataEditor::kCaption, L"TCSVFilterDataForm", model.pages, model.conditions, scale),
        m_(model) {}

 private:
  void BuildGeneral(Box a) override {
    Group(Wide(FilterDataEditor::kDeleteGroup).c_str(), Box{a.x, a.y, a.w, 74});
    const auto& items = FilterDataEditor::kDeleteItems;
    radios_[0] = Radio(Wide(items[0]).c_str(), Box{a.x + 10, a.y + 22, a.w - 20, 20}, kDeleteFailing, true);
    radios_[1] = Radio(Wide(items[1]).c_str(), Box{a.x + 10, a.y + 46, a.w - 20, 20}, kDeleteMatching, false);
    conditions_.Build(*this, Box{a.x, a.y + 84, a.w, a.h - 84}, kConditions, FilterDataEditor::kFilterGroup,
                      FilterDataEditor::kCommandCaptions);
  }
  void FillGeneral() override {
    SendMessageW(radios_[0], BM_SETCHECK, m_.deleteMatching ? BST_UNCHECKED : BST_CHECKED, 0);
    SendMessageW(radios_[1], BM_SETCHECK, m_.deleteMatching ? BST_CHECKED : BST_UNCHECKED, 0);
    conditions_.Fill(m_.conditions);
  }
  void ReadGeneral() override {
    m_.deleteMatching = SendMessageW(radios_[1], BM_GETCHECK, 0, 0) == BST_CHECKED;
    conditions_.Read(m_.conditions);
  }
  bool Confirm() override {
    ReadAll();
    if (const auto failure = m_.Check()) {
      Report<FilterDataControl>(*failure, [this](FilterDataControl) { return conditions_.List(); });
      return false;
    }
    return true;
  }

  FilterDataEditor& m_;
  HWND radios_[2] = {};
};

}  // namespace

bool ConfigureFilterData(TQMPluginParams& params) { return RunEditor<FilterDataDialog>(params, FilterDataEditor()); }

}  // namespace qm::ui
