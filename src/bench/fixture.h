#pragma once

#include <optional>

#include "bench/radio.h"

namespace orvane::bench {

/// What joins the four: the RF cable between test set and Target, and the supply's leads. Each instrument writes
/// what it puts out and reads what the others do; none of them knows another one.
struct Fixture {
  double cableLossDb = 0.5;
  double leadLossVolts = 0.01;

  Downlink generator;           ///< by the test set, at its own connector
  std::optional<Burst> uplink;  ///< by the Target, at its own connector; none while its transmitter is off
  bool supplyOn = false;        ///< by the supply, through `Feed`
  double supplyVolts = 0;
  bool powerLost = false;  ///< the Target had too little at some time; taken back by the Target
  double targetAmps = 0;
  bool chargerConnected = true;

  /// The Target's battery contacts. With the supply off it lives on the fixture's own cell.
  [[nodiscard]] double BatteryVolts() const { return supplyOn ? supplyVolts - leadLossVolts : kCellVolts; }
  [[nodiscard]] bool TargetPowered() const { return BatteryVolts() >= kBrownOutVolts; }
  void Feed(bool on, double volts) {
    supplyOn = on;
    supplyVolts = volts;
    if (!TargetPowered()) {
      powerLost = true;
      uplink.reset();
    }
  }
  [[nodiscard]] Downlink AtTarget() const { return {generator.frequencyMHz, generator.levelDbm - cableLossDb}; }

  static constexpr double kCellVolts = 3.8;
  static constexpr double kBrownOutVolts = 2.8;
};

}  // namespace orvane::bench
