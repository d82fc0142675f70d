#pragma once

#include "link/target_link.h"
#include "panels/orvane_main.h"
#include "platform/boxes.h"
#include "platform/panel.h"
#include "state/reply_state.h"

namespace orvane {

/// The tab "TX": an engineer sets the Target's power by level or by DAC value and keys an uplink burst. What the tab
/// sets on the test set is TestSetByHand's; its ramp tables are the ramp editor's.
class TransmitterByHand {
 public:
  TransmitterByHand(PanelRef<OrvaneMain> main, TargetLink& link, ReplyState& reply, Boxes& boxes)
      : main_(main), link_(link), reply_(reply), boxes_(boxes) {}

  void Connect();

 private:
  void ConnectFilters(OrvaneMain& main);
  void SetLevel();
  /// What the level box and the band say, also as soon as one of them changes.
  void SendLevel();
  void SetDac();
  void SwitchBurst();
  void StartBurst();
  void StopBurst();

  PanelRef<OrvaneMain> main_;
  TargetLink& link_;
  ReplyState& reply_;
  Boxes& boxes_;
};

}  // namespace orvane
