#pragma once

#include <string>
#include <string_view>

#include "link/target_link.h"
#include "panels/orvane_main.h"
#include "platform/boxes.h"
#include "platform/panel.h"

namespace orvane {

/// The tab "RX": an engineer sets the Target's receiver by hand, runs a frequency burst test and measures a power.
/// What the tab sets on the test set is TestSetByHand's. A failure undoes no step that went through.
class ReceiverByHand {
 public:
  ReceiverByHand(PanelRef<OrvaneMain> main, TargetLink& link, Boxes& boxes)
      : main_(main), link_(link), boxes_(boxes) {}

  void Connect();

 private:
  void ConnectFilters(OrvaneMain& main);
  void SetAfc();
  void TestFrequencyBurst();
  void MeasurePower();
  /// Writes a value and, when the Target took it, reads it back: the console shows so that it stands.
  void WriteAndReadBack(const std::string& write, std::string_view read);
  void LimitPowerLevel();

  PanelRef<OrvaneMain> main_;
  TargetLink& link_;
  Boxes& boxes_;
};

}  // namespace orvane
