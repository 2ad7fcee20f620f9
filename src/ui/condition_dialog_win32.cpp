#include "ui/condition_dialog_win32.h"

#include "ui/dialog_window_win32.h"
#include "ui/text_win32.h"

namespace qm::ui {

namespace {

enum : int { kColumn = 10, kExpression, kUseRegex, kCaseSensitive };

bool Checked(HWND box) { return SendMessageW(box, BM_GETCHECK, 0, 0) == BST_CHECKED; }
void SetChecked(HWND box, bool on) { SendMessageW(box, BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0); }

// Column, expression (its label following the regular-expression box), the
// two boxes; OK and Cancel close it as they are.
class ConditionDialog final : public DialogWindow {
 public:
  static constexpr int kWidth = 380;
  static constexpr int kHeight = 210;

  ConditionDialog(ConditionEditor& model, int scale)
      : DialogWindow(Wide(model.Caption()), L"TConditionForm", kWidth, kHeight, scale), m_(model) {}

 private:
  void Build() override {
    const int w = kWidth - 20;
    Label(Wide(ConditionEditor::kColumnLabel).c_str(), Box{10, 12, w, 18});
    column_ = Edit(Box{10, 32, 120, 23}, kColumn, 0);
    expressionLabel_ = Label(Wide(ConditionEditor::kPatternLabel).c_str(), Box{10, 66, w, 18}, kStretchRight);
    expression_ = Edit(Box{10, 86, w, 23}, kExpression);
    regex_ = Check(Wide(ConditionEditor::kUseRegex).c_str(), Box{10, 120, w, 22}, kUseRegex);
    case_ = Check(Wide(ConditionEditor::kCaseSensitive).c_str(), Box{10, 146, w, 22}, kCaseSensitive);
    AddDialogButtons(true);
  }
  void Fill() override {
    SetText(column_, Wide(m_.fields.column));
    SetText(expression_, Wide(m_.fields.expression));
    SetChecked(regex_, m_.fields.regex);
    SetChecked(case_, m_.fields.caseSensitive);
    SetLabel(expressionLabel_, Wide(m_.ExpressionLabel()));
  }
  void Command(int id, int code, HWND) override {
    if (id != kUseRegex || code != BN_CLICKED) return;
    m_.fields.regex = Checked(regex_);
    SetLabel(expressionLabel_, Wide(m_.ExpressionLabel()));
  }
  bool Confirm() override {
    m_.fields = ConditionFields{Utf16(TextOf(column_)), Utf16(TextOf(expression_)), Checked(case_), Checked(regex_)};
    return true;
  }

  ConditionEditor& m_;
  HWND column_ = nullptr, expressionLabel_ = nullptr, expression_ = nullptr, regex_ = nullptr, case_ = nullptr;
};

}  // namespace

bool EditCondition(ConditionEditor& model, HWND owner, int scale) {
  // The fields change only on OK.
  ConditionEditor edited = model;
  if (!ConditionDialog(edited, scale).RunModal(owner)) return false;
  model = edited;
  return true;
}

}  // namespace qm::ui
