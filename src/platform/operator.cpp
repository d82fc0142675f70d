#include "platform/operator.h"

#include <cstdint>

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

/// "frmAutoCal.txtLoss".
std::string FullNameOf(const Control& control) { return control.Owner().Name() + "." + control.Name(); }

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

void Operator::Tell(const std::string& where, std::string_view how, std::string_view value) const {
  nest_.onAct(where, how, value);
}

Operator::Outcome Operator::Act(const Control& control, std::string_view how, std::string_view value,
                                const std::function<void()>& act) {
  if (!control.EnabledForOperator()) throw ControlDisabled(control.Name());
  if (nest_.onAct) Tell(FullNameOf(control), how, value);
  return Run(act);
}

Operator::Outcome Operator::Click(Button& button) {
  if (nest_.refusal && button.EnabledForOperator()) {
    if (const auto why = nest_.refusal(button)) return nest_.Refuse(*why);
  }
  return Act(button, "click", {}, [&] { button.Click(); });
}

Operator::Outcome Operator::Click(TextBox& box) {
  return Act(box, "click", {}, [&] {
    if (box.onClick) box.onClick();
  });
}

Operator::Outcome Operator::Click(ComboBox& combo) {
  return Act(combo, "click", {}, [&] { combo.Click(); });
}

Operator::Outcome Operator::Select(OptionButton& option) {
  return Act(option, "click", {}, [&] { option.Click(); });
}

Operator::Outcome Operator::Check(CheckBox& box, bool checked) {
  return Act(box, "check", checked ? "1" : "0", [&] { box.SetChecked(checked); });
}

Operator::Outcome Operator::Type(TextBox& box, std::string_view text) {
  return Act(box, "type", text, [&] { box.SetText(text); });
}

Operator::Outcome Operator::Type(ComboBox& combo, std::string_view text) {
  return Act(combo, "type", text, [&] { combo.SetText(text); });
}

Operator::Outcome Operator::Key(TextBox& box, char32_t key) {
  return Key(box, key, [&] { return After(box.Text(), key); });
}

Operator::Outcome Operator::Key(TextBox& box, char32_t key, const std::function<std::string()>& effect) {
  if (!box.onKeyPress && box.EnabledForOperator()) {
    // What a key has left somewhere in the middle of a text is told as the text.
    const std::string left = effect();
    if (left != After(box.Text(), key)) return Type(box, left);
    return Act(box, "key", std::to_string(static_cast<std::uint32_t>(key)), [&] { box.SetText(left); });
  }
  return Act(box, "key", std::to_string(static_cast<std::uint32_t>(key)), [&] {
    if (key != 0 && box.onKeyPress) box.onKeyPress(key);
    const std::string left = effect();
    if (nest_.onAct && left != After(box.Text(), key)) Tell(FullNameOf(box), "type", left);
    box.SetText(left);
  });
}

Operator::Outcome Operator::Leave(TextBox& box) {
  if (nest_.onAct) Tell(FullNameOf(box), "leave", {});
  return Run([&] {
    if (box.onLostFocus) box.onLostFocus();
  });
}

Operator::Outcome Operator::Key(ComboBox& combo, char32_t key) {
  return Act(combo, "key", std::to_string(static_cast<std::uint32_t>(key)),
             [&] { combo.SetText(After(combo.Text(), key)); });
}

Operator::Outcome Operator::Pick(ComboBox& combo, std::size_t index) {
  return Act(combo, "pick", std::to_string(index), [&] { combo.Pick(index); });
}

Operator::Outcome Operator::Mark(ListBox& list, int row) {
  return Act(list, "mark", std::to_string(row), [&] {
    if (row >= 0 && static_cast<std::size_t>(row) < list.Items().size()) list.Select(row);
  });
}

Operator::Outcome Operator::TurnTo(TabControl& tabs, int page) {
  return Act(tabs, "turn", std::to_string(page), [&] { tabs.Select(page); });
}

Operator::Outcome Operator::Move(UpDown& upDown, Long value) {
  return Act(upDown, "move", std::to_string(value), [&] { upDown.MoveTo(value); });
}

Operator::Outcome Operator::Step(UpDown& upDown, int steps) {
  return Act(upDown, "step", std::to_string(steps), [&] { upDown.StepBy(steps); });
}

Operator::Outcome Operator::Close(Panel& panel) {
  if (nest_.onAct) Tell(panel.Name(), "close", {});
  return Run([&] { panel.Close(); });
}

}  // namespace orvane
