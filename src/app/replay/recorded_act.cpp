#include "app/replay/recorded_act.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>

#include "platform/controls.h"

namespace orvane {
namespace {

std::string_view TakeUpTo(std::string_view& text, char mark) {
  const std::string_view taken = text.substr(0, text.find(mark));
  text.remove_prefix(std::min(taken.size() + 1, text.size()));
  return taken;
}

long NumberOf(std::string_view text) {
  long number = 0;
  (void)std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

struct ActRow {
  std::string_view how;
  /// @return whether it fits the control's kind.
  bool (*act)(Operator& hand, Control& control, std::string_view value);
};

template <class Kind, class Act>
bool On(Control& control, Act act) {
  auto* const fitting = dynamic_cast<Kind*>(&control);
  if (fitting == nullptr) return false;
  (void)act(*fitting);
  return true;
}

constexpr std::array kActs{
    ActRow{"click",
           [](Operator& hand, Control& control, std::string_view /*value*/) {
             return On<Button>(control, [&](Button& button) { return hand.Click(button); }) ||
                    On<TextBox>(control, [&](TextBox& box) { return hand.Click(box); }) ||
                    On<ComboBox>(control, [&](ComboBox& combo) { return hand.Click(combo); }) ||
                    On<OptionButton>(control, [&](OptionButton& option) { return hand.Select(option); });
           }},
    ActRow{"check",
           [](Operator& hand, Control& control, std::string_view value) {
             return On<CheckBox>(control, [&](CheckBox& box) { return hand.Check(box, value == "1"); });
           }},
    ActRow{"type",
           [](Operator& hand, Control& control, std::string_view value) {
             return On<TextBox>(control, [&](TextBox& box) { return hand.Type(box, value); }) ||
                    On<ComboBox>(control, [&](ComboBox& combo) { return hand.Type(combo, value); });
           }},
    ActRow{"key",
           [](Operator& hand, Control& control, std::string_view value) {
             const auto key = static_cast<char32_t>(NumberOf(value));
             return On<TextBox>(control, [&](TextBox& box) { return hand.Key(box, key); }) ||
                    On<ComboBox>(control, [&](ComboBox& combo) { return hand.Key(combo, key); });
           }},
    ActRow{"leave",
           [](Operator& hand, Control& control, std::string_view /*value*/) {
             return On<TextBox>(control, [&](TextBox& box) { return hand.Leave(box); });
           }},
    ActRow{"pick",
           [](Operator& hand, Control& control, std::string_view value) {
             return On<ComboBox>(control, [&](ComboBox& combo) {
               return hand.Pick(combo, static_cast<std::size_t>(NumberOf(value)));
             });
           }},
    ActRow{"mark",
           [](Operator& hand, Control& control, std::string_view value) {
             return On<ListBox>(control,
                                [&](ListBox& list) { return hand.Mark(list, static_cast<int>(NumberOf(value))); });
           }},
    ActRow{"turn",
           [](Operator& hand, Control& control, std::string_view value) {
             return On<TabControl>(
                 control, [&](TabControl& tabs) { return hand.TurnTo(tabs, static_cast<int>(NumberOf(value))); });
           }},
    ActRow{"move",
           [](Operator& hand, Control& control, std::string_view value) {
             return On<UpDown>(control,
                               [&](UpDown& upDown) { return hand.Move(upDown, static_cast<Long>(NumberOf(value))); });
           }},
    ActRow{"step",
           [](Operator& hand, Control& control, std::string_view value) {
             return On<UpDown>(control,
                               [&](UpDown& upDown) { return hand.Step(upDown, static_cast<int>(NumberOf(value))); });
           }},
};

}  // namespace

bool DoRecordedAct(Operator& hand, OperationNest& nest, const std::vector<Panel*>& panels, std::string_view act) {
  std::string_view where = TakeUpTo(act, '\n');
  const std::string_view how = TakeUpTo(act, '\n');
  const std::string_view panelName = TakeUpTo(where, '.');
  const auto panel =
      std::find_if(panels.begin(), panels.end(), [&](const Panel* each) { return each->Name() == panelName; });
  if (panel == panels.end()) return false;
  // Nobody acts on a panel that he does not see.
  (void)nest.Run([&] { (*panel)->Touch(); });
  if (how == "show") {
    (void)nest.Run([&] { (*panel)->Show(); });
    return true;
  }
  if (how == "close") {
    (void)hand.Close(**panel);
    return true;
  }
  Control* const control = (*panel)->Find(where);
  const auto* const row =
      std::find_if(kActs.begin(), kActs.end(), [&](const ActRow& each) { return each.how == how; });
  if (control == nullptr || row == kActs.end()) return false;
  try {
    return row->act(hand, *control, act);
  } catch (const ControlDisabled&) {
    return false;
  }
}

}  // namespace orvane
