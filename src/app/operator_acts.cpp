#include "app/operator_acts.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/text.h"

namespace orvane {
namespace {

[[noreturn]] void FailFit(const Control& control, std::string_view act) {
  throw RpcFailure(RpcError::ActDoesNotFit, "\"" + std::string(act) + "\" does not fit " + control.Name() + ".");
}

void RequireEnabled(const Control& control) {
  if (!control.Enabled()) throw RpcFailure(RpcError::ControlDisabled, control.Name() + " is disabled.");
}

std::size_t IndexOf(const std::vector<std::string>& items, const std::string& text) {
  const auto hit = std::find(items.begin(), items.end(), text);
  if (hit == items.end()) throw RpcFailure(RpcError::InvalidParams, "There is no entry \"" + text + "\".");
  return static_cast<std::size_t>(hit - items.begin());
}

void SetText(Operator& hand, Control& control, const Json& params) {
  const std::string text = TextParam(params, "text");
  if (auto* box = dynamic_cast<TextBox*>(&control)) return ThrowIfStopped(hand.Type(*box, text));
  if (auto* combo = dynamic_cast<ComboBox*>(&control)) return ThrowIfStopped(hand.Type(*combo, text));
  FailFit(control, "text");
}

void SetSelect(Operator& hand, Control& control, const Json& params) {
  const std::string text = TextParam(params, "select");
  RequireEnabled(control);
  if (auto* combo = dynamic_cast<ComboBox*>(&control)) {
    return ThrowIfStopped(hand.Pick(*combo, IndexOf(combo->Items(), text)));
  }
  if (auto* list = dynamic_cast<ListBox*>(&control)) {
    return list->Select(static_cast<int>(IndexOf(list->Items(), text)));
  }
  if (auto* tabs = dynamic_cast<TabControl*>(&control)) {
    return tabs->Select(static_cast<int>(IndexOf(tabs->Tabs(), text)));
  }
  FailFit(control, "select");
}

void SetChecked(Operator& hand, Control& control, const Json& params) {
  const bool checked = FlagParam(params, "checked");
  if (auto* box = dynamic_cast<CheckBox*>(&control)) return ThrowIfStopped(hand.Check(*box, checked));
  auto* option = dynamic_cast<OptionButton*>(&control);
  // No click clears an option: another one of its group does.
  if (option == nullptr || (option->Selected() && !checked)) FailFit(control, "checked");
  RequireEnabled(control);
  if (checked && !option->Selected()) ThrowIfStopped(hand.Select(*option));
}

void SetValue(Operator& hand, Control& control, const Json& params) {
  const std::int64_t value = IntegerParam(params, "value");
  auto* upDown = dynamic_cast<UpDown*>(&control);
  if (upDown == nullptr) FailFit(control, "value");
  RequireEnabled(control);
  if (value < upDown->Min() || value > upDown->Max()) {
    throw RpcFailure(RpcError::InvalidParams, control.Name() + " goes from " + std::to_string(upDown->Min()) +
                                                  " to " + std::to_string(upDown->Max()) + ".");
  }
  ThrowIfStopped(hand.Move(*upDown, static_cast<Long>(value)));
}

struct SetRow {
  const char* param;
  void (*act)(Operator&, Control&, const Json&);
};
constexpr std::array kSets{
    SetRow{"text", &SetText},
    SetRow{"select", &SetSelect},
    SetRow{"checked", &SetChecked},
    SetRow{"value", &SetValue},
};

}  // namespace

void ThrowIfStopped(const Operator::Outcome& outcome) {
  if (outcome) throw RpcFailure(RpcError::Stopped, *outcome);
}

void ActSet(Operator& hand, Control& control, const Json& params) {
  const SetRow* chosen = nullptr;
  for (const SetRow& row : kSets) {
    if (!params.contains(row.param)) continue;
    if (chosen != nullptr) throw RpcFailure(RpcError::InvalidParams, "One act at a time.");
    chosen = &row;
  }
  if (chosen == nullptr) {
    throw RpcFailure(RpcError::InvalidParams, "One of \"text\", \"select\", \"checked\", \"value\" is missing.");
  }
  chosen->act(hand, control, params);
}

void ActKeys(Operator& hand, Control& control, std::string_view keys) {
  auto* box = dynamic_cast<TextBox*>(&control);
  auto* combo = dynamic_cast<ComboBox*>(&control);
  if (box == nullptr && combo == nullptr) FailFit(control, "key");
  RequireEnabled(control);
  for (const char32_t key : DecodeUtf8(keys)) {
    ThrowIfStopped(box != nullptr ? hand.Key(*box, key) : hand.Key(*combo, key));
  }
}

void ActClick(Operator& hand, Control& control) {
  if (auto* button = dynamic_cast<Button*>(&control)) return ThrowIfStopped(hand.Click(*button));
  if (auto* box = dynamic_cast<TextBox*>(&control)) return ThrowIfStopped(hand.Click(*box));
  if (auto* combo = dynamic_cast<ComboBox*>(&control)) return ThrowIfStopped(hand.Click(*combo));
  if (auto* option = dynamic_cast<OptionButton*>(&control)) return ThrowIfStopped(hand.Select(*option));
  if (auto* check = dynamic_cast<CheckBox*>(&control)) return ThrowIfStopped(hand.Check(*check, !check->Checked()));
  FailFit(control, "click");
}

}  // namespace orvane
