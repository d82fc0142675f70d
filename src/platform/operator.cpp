#include "platform/operator.h"

#include "base/text.h"
#include "platform/panel.h"

namespace orvane {
namespace {

constexpr char32_t kBackspace = 8;
constexpr char32_t kFirstCharacter = 32;

/// The text after a key had its own effect at the text's end.
std::string After(const std::string& text, char32_t key) {
  if (key == kBackspace) {
    std::string shorter = text;
    DropLastCharacter(shorter);
    return shorter;
  }
  return key < kFirstCharacter ? text : text + EncodeUtf8(std::u32string(1, key));
}

/// An act as the nest tells of it, however it ends.
class HandAct {
 public:
  explicit HandAct(const OperationNest& nest) : nest_(nest) {
    if (nest_.beforeHand) nest_.beforeHand();
  }
  HandAct(const HandAct&) = delete;
  HandAct& operator=(const HandAct&) = delete;
  ~HandAct() {
    if (nest_.behindHand) nest_.behindHand();
  }

 private:
  const OperationNest& nest_;
};

}  // namespace

Operator::Outcome Operator::Run(const std::function<void()>& act) {
  const HandAct hand(nest_);
  return nest_.Run(act);
}

Operator::Outcome Operator::Act(const Control& control, const std::function<void()>& act) {
  if (!control.EnabledForOperator()) throw ControlDisabled(control.Name());
  return Run(act);
}

Operator::Outcome Operator::Click(Button& button) {
  if (nest_.refusal && button.EnabledForOperator()) {
    if (const auto why = nest_.refusal(button)) return nest_.Refuse(*why);
  }
  return Act(button, [&] { button.Click(); });
}

Operator::Outcome Operator::Click(TextBox& box) {
  return Act(box, [&] {
    if (box.onClick) box.onClick();
  });
}

Operator::Outcome Operator::Click(ComboBox& combo) {
  return Act(combo, [&] { combo.Click(); });
}

Operator::Outcome Operator::Select(OptionButton& option) {
  return Act(option, [&] { option.Click(); });
}

Operator::Outcome Operator::Check(CheckBox& box, bool checked) {
  return Act(box, [&] { box.SetChecked(checked); });
}

Operator::Outcome Operator::Type(TextBox& box, std::string_view text) {
  return Act(box, [&] { box.SetText(text); });
}

Operator::Outcome Operator::Type(ComboBox& combo, std::string_view text) {
  return Act(combo, [&] { combo.SetText(text); });
}

Operator::Outcome Operator::Key(TextBox& box, char32_t key) {
  return Key(box, key, [&] { return After(box.Text(), key); });
}

Operator::Outcome Operator::Key(TextBox& box, char32_t key, const std::function<std::string()>& effect) {
  return Act(box, [&] {
    if (key != 0 && box.onKeyPress) box.onKeyPress(key);
    box.SetText(effect());
  });
}

Operator::Outcome Operator::Leave(TextBox& box) {
  return Run([&] {
    if (box.onLostFocus) box.onLostFocus();
  });
}

Operator::Outcome Operator::Key(ComboBox& combo, char32_t key) {
  return Act(combo, [&] { combo.SetText(After(combo.Text(), key)); });
}

Operator::Outcome Operator::Pick(ComboBox& combo, std::size_t index) {
  return Act(combo, [&] { combo.Pick(index); });
}

Operator::Outcome Operator::Mark(ListBox& list, int row) {
  return Act(list, [&] {
    if (row >= 0 && static_cast<std::size_t>(row) < list.Items().size()) list.Select(row);
  });
}

Operator::Outcome Operator::TurnTo(TabControl& tabs, int page) {
  return Act(tabs, [&] { tabs.Select(page); });
}

Operator::Outcome Operator::Move(UpDown& upDown, Long value) {
  return Act(upDown, [&] { upDown.MoveTo(value); });
}

Operator::Outcome Operator::Step(UpDown& upDown, int steps) {
  return Act(upDown, [&] { upDown.StepBy(steps); });
}

Operator::Outcome Operator::Close(Panel& panel) {
  return Run([&] { panel.Close(); });
}

}  // namespace orvane
