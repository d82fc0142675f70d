#include "hands.h"

#include <array>

#include "base/counted.h"

namespace orvane::proofs {
namespace {

/// What comes out of a keyboard, a scanner or a cat.
constexpr std::array<std::string_view, 14> kTexts{"",     "30",   "0", "-1",   "8801234567890", "abc",   "1e9",
                                                  "&HZZ", "0x10", " ", "-0.5", "한글",          "99999", "ti"};
constexpr std::array<std::string_view, 5> kCommands{"ti", "mpr 30", "sr 1 2", "nonsense", "rfpr 1"};

}  // namespace

void Hands::Plan(HandKind kind, int acts, TimePoint within) {
  for (int i = 0; i < acts; ++i) {
    const TimePoint when = stand_.loop.Now() + within * chance_.Between(0, 10000) / 10000;
    stand_.loop.PostAt(when, [this, kind] { Act(kind); });
  }
}

void Hands::Act(HandKind kind) {
  try {
    if (kind == HandKind::kPlausible) {
      ActPlausibly();
    } else {
      const Counted astray(astray_);
      ActAstray();
    }
  } catch (const ControlDisabled&) {
    // It refuses a hand; that is its right.
  }
}

void Hands::ActPlausibly() {
  StationPanels& panels = stand_.Panels();
  const std::array<Button*, 7> buttons{&panels.main.cmdAutoCal,
                                       &panels.main.Command1,
                                       &panels.main.Command2,
                                       &panels.autoCal.cmdAutoCalStop,
                                       &panels.main.cmdTargetInitialize,
                                       &panels.main.cmdTargetReset,
                                       &panels.autoCal.cmdAllCalStart};
  switch (chance_.Of(4)) {
    case 0:
    case 1: {
      Button& button = *chance_.From(buttons);
      Note("click " + button.Owner().Name() + "." + button.Name());
      stand_.op.Click(button);
      break;
    }
    case 2: {
      Panel& panel = *chance_.From(panels.All());
      if (&panel == &panels.main) return;
      Note("close " + panel.Name());
      stand_.op.Close(panel);
      break;
    }
    default: {
      TextBox& box = panels.main.txtUserCommand;
      const std::string command(chance_.From(kCommands));
      Note("command " + command);
      stand_.op.Click(box);
      stand_.op.Type(box, command);
      stand_.op.Key(box, 13);
      break;
    }
  }
}

void Hands::ActAstray() {
  Panel& panel = *chance_.From(stand_.Panels().All());
  if (panel.Controls().empty()) return;
  panel.Touch();
  Handle(*chance_.From(panel.Controls()));
}

void Hands::Handle(Control& control) {
  const std::string name = control.Owner().Name() + "." + control.Name();
  if (auto* button = dynamic_cast<Button*>(&control)) {
    Note("click " + name);
    stand_.op.Click(*button);
  } else if (auto* box = dynamic_cast<TextBox*>(&control)) {
    if (chance_.In(50)) {
      const std::string text(chance_.From(kTexts));
      Note("type \"" + text + "\" into " + name);
      stand_.op.Type(*box, text);
    } else {
      const int key = chance_.Between(8, 126);
      Note("key " + std::to_string(key) + " in " + name);
      stand_.op.Key(*box, static_cast<char32_t>(key));
    }
  } else if (auto* combo = dynamic_cast<ComboBox*>(&control)) {
    if (combo->Items().empty() || chance_.In(20)) {
      Note("type into " + name);
      stand_.op.Type(*combo, chance_.From(kTexts));
    } else {
      Note("pick of " + name);
      stand_.op.Pick(*combo, chance_.Of(combo->Items().size()));
    }
  } else if (auto* option = dynamic_cast<OptionButton*>(&control)) {
    Note("select " + name);
    stand_.op.Select(*option);
  } else if (auto* check = dynamic_cast<CheckBox*>(&control)) {
    Note("check " + name);
    stand_.op.Check(*check, chance_.In(50));
  } else if (auto* upDown = dynamic_cast<UpDown*>(&control)) {
    Note("step " + name);
    stand_.op.Step(*upDown, chance_.Between(-3, 3));
  } else if (auto* list = dynamic_cast<ListBox*>(&control)) {
    Note("mark in " + name);
    stand_.op.Mark(*list, chance_.Between(0, 40));
  }
}

}  // namespace orvane::proofs
