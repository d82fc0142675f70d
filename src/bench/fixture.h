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
  bool supplyOn = false;
  double supplyVolts = 0;
  double targetAmps = 0;
  bool chargerConnected = true;

  /// The Target's battery contacts. With the supply off it lives on the fixture's own cell.
  [[nodiscard]] double BatteryVolts() const { return supplyOn ? supplyVolts - leadLossVolts : kCellVolts; }
  [[nodiscard]] Downlink AtTarget() const { return {generator.frequencyMHz, generator.levelDbm - cableLossDb}; }

  static constexpr double kCellVolts = 3.8;
};

}  // namespace orvane::bench
