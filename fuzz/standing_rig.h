#pragma once

#include "link/link_rig.h"

namespace orvane::fuzz {

/// A link that is built once, since its panels have hundreds of controls, and is put back ahead of each input.
inline test::LinkRig& StandingRig() {
  static test::LinkRig rig;
  rig.link.Rest();
  rig.state = ReplyState{};
  rig.state.TargetMode = "TestMode";
  rig.tally = LinkTally{};
  rig.cal = CalState{};
  rig.main.txtUserCommand.SetText("");
  rig.main.txtResults.SetText("");
  rig.serial.writes.clear();
  rig.serial.commands.clear();
  rig.boxes.shown.clear();
  rig.journal.Clear();
  return rig;
}

}  // namespace orvane::fuzz
