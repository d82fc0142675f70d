#include "app/automation/operator_acts.h"

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
  if (control.EnabledForOperator()) return;
  const std::string why = control.DisabledWhy().empty() ? "" : " " + control.DisabledWhy();
  throw RpcFailure(RpcError::ControlDisabled, control.Name() + " is disabled." + why);
}

/// What the control is, or null.
template <class Kind>
Kind* As(Control& control) {
  return dynamic_cast<Kind*>(&control);
}

template <class Items>
int IndexOf(const Items& items, const std::string& text) {
  const auto hit = std::find(items.begin(), items.end(), text);
  if (hit == items.end()) throw RpcFailure(RpcError::InvalidParams, "There is no entry \"" + text + "\".");
  return static_cast<int>(hit - items.begin());
}

Act SetText(Operator& hand, Control& control, const Json& params) {
  const std::string text = TextParam(params, "text");
  if (auto* box = As<TextBox>(control)) return [=, &hand] { ThrowIfStopped(hand.Type(*box, text)); };
  if (auto* combo = As<ComboBox>(control)) return [=, &hand] { ThrowIfStopped(hand.Type(*combo, text)); };
  FailFit(control, "text");
}

Act SetSelect(Operator& hand, Control& control, const Json& params) {
  const std::string text = TextParam(params, "select");
  if (auto* combo = As<ComboBox>(control)) {
    return [=, &hand] {
      RequireEnabled(*combo);
      ThrowIfStopped(hand.Pick(*combo, static_cast<std::size_t>(IndexOf(combo->Items(), text))));
    };
  }
  if (auto* list = As<ListBox>(control)) {
    return [=, &hand] {
      RequireEnabled(*list);
      ThrowIfStopped(hand.Mark(*list, IndexOf(list->Items(), text)));
    };
  }
  if (auto* tabs = As<TabControl>(control)) {
    return [=, &hand] {
      RequireEnabled(*tabs);
      ThrowIfStopped(hand.TurnTo(*tabs, IndexOf(tabs->Tabs(), text)));
    };
  }
  FailFit(control, "select");
}

Act SetChecked(Operator& hand, Control& control, const Json& params) {
  const bool checked = FlagParam(params, "checked");
  if (auto* box = As<CheckBox>(control)) return [=, &hand] { ThrowIfStopped(hand.Check(*box, checked)); };
  auto* option = As<OptionButton>(control);
  if (option == nullptr) FailFit(control, "checked");
  return [=, &hand] {
    // No click clears an option: another one of its group does.
    if (option->Selected() && !checked) FailFit(*option, "checked");
    RequireEnabled(*option);
    if (checked && !option->Selected()) ThrowIfStopped(hand.Select(*option));
  };
}

Act SetValue(Operator& hand, Control& control, const Json& params) {
  const std::int64_t value = IntegerParam(params, "value");
  auto* upDown = As<UpDown>(control);
  if (upDown == nullptr) FailFit(control, "value");
  return [=, &hand] {
    RequireEnabled(*upDown);
    if (value < upDown->Min() || value > upDown->Max()) {
      throw RpcFailure(RpcError::InvalidParams, upDown->Name() + " goes from " + std::to_string(upDown->Min()) +
                                                    " to " + std::to_string(upDown->Max()) + ".");
    }
    ThrowIfStopped(hand.Move(*upDown, static_cast<Long>(value)));
  };
}

struct SetRow {
  const char* param;
  Act (*prepare)(Operator&, Control&, const Json&);
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

Act PrepareSet(Operator& hand, Control& control, const Json& params) {
  const auto given = [&](const SetRow& row) { return params.contains(row.param); };
  if (std::count_if(kSets.begin(), kSets.end(), given) != 1) {
    throw RpcFailure(RpcError::InvalidParams, "It takes one of \"text\", \"select\", \"checked\", \"value\".");
  }
  return std::find_if(kSets.begin(), kSets.end(), given)->prepare(hand, control, params);
}

Act PrepareKeys(Operator& hand, Control& control, const Json& params) {
  const std::u32string keys = DecodeUtf8(TextParam(params, "text"));
  auto* box = As<TextBox>(control);
  auto* combo = As<ComboBox>(control);
  if (box == nullptr && combo == nullptr) FailFit(control, "key");
  return [=, &hand, &control] {
    RequireEnabled(control);
    for (const char32_t key : keys) {
      ThrowIfStopped(box != nullptr ? hand.Key(*box, key) : hand.Key(*combo, key));
    }
  };
}

Act PrepareClick(Operator& hand, Control& control) {
  if (auto* button = As<Button>(control)) return [=, &hand] { ThrowIfStopped(hand.Click(*button)); };
  if (auto* box = As<TextBox>(control)) return [=, &hand] { ThrowIfStopped(hand.Click(*box)); };
  if (auto* combo = As<ComboBox>(control)) return [=, &hand] { ThrowIfStopped(hand.Click(*combo)); };
  if (auto* option = As<OptionButton>(control)) return [=, &hand] { ThrowIfStopped(hand.Select(*option)); };
  if (auto* check = As<CheckBox>(control)) {
    return [=, &hand] { ThrowIfStopped(hand.Check(*check, !check->Checked())); };
  }
  FailFit(control, "click");
}

}  // namespace orvane
