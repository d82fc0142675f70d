#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/controls.h"
#include "platform/operation_nest.h"

namespace orvane {

/// The control, or a frame around it, is disabled: it refuses an operator.
class ControlDisabled : public std::runtime_error {
 public:
  explicit ControlDisabled(const std::string& name) : std::runtime_error(name + " is disabled.") {}
};

/// What an operator can do to a control, by hand, by mouse or through the automation port. Every act refuses a
/// disabled control with ControlDisabled and runs as an operation of the nest; it returns the text of the failure
/// that stopped it, or why the station refused it, or no value.
class Operator {
 public:
  using Outcome = std::optional<std::string>;

  explicit Operator(OperationNest& nest) : nest_(nest) {}

  Outcome Click(Button& button);
  /// A click on a control that is no button but answers clicks.
  Outcome Click(TextBox& box);
  Outcome Click(ComboBox& combo);
  Outcome Select(OptionButton& option);
  Outcome Check(CheckBox& box, bool checked);
  /// Replaces the whole text in one act.
  Outcome Type(TextBox& box, std::string_view text);
  Outcome Type(ComboBox& combo, std::string_view text);
  /// One key: a character, 13 for Enter, 8 for backspace.
  Outcome Key(TextBox& box, char32_t key);
  /// A key whose own effect the window brings about, at any place of the box: `effect` runs behind the key press and
  /// returns the text that it left. A key without character, 0, raises no key press.
  Outcome Key(TextBox& box, char32_t key, const std::function<std::string()>& effect);
  Outcome Key(ComboBox& combo, char32_t key);
  /// The focus leaves the box, which may be disabled by then.
  Outcome Leave(TextBox& box);
  Outcome Pick(ComboBox& combo, std::size_t index);
  /// A row that the list has no more is passed over.
  Outcome Mark(ListBox& list, int row);
  Outcome TurnTo(TabControl& tabs, int page);
  Outcome Move(UpDown& upDown, Long value);
  Outcome Step(UpDown& upDown, int steps);
  /// The close button of the panel's window.
  Outcome Close(Panel& panel);

 private:
  Outcome Act(const Control& control, std::string_view how, std::string_view value, const std::function<void()>& act);
  void Tell(const std::string& where, std::string_view how, std::string_view value) const;
  Outcome Run(const std::function<void()>& act);

  OperationNest& nest_;
};

}  // namespace orvane
