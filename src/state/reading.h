#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvane {

/// A value that a run has read or found, with the limits that it judges it by, if it does.
struct Reading {
  /// "tx.gsm.level.5.power".
  std::string name;
  double value = 0;
  /// "dBm", "half dB", "0.1 dB", "count", "degree", "hertz".
  std::string_view unit;
  std::optional<double> low{};
  std::optional<double> high{};
};

/// No value without limits. Both limits count as inside.
[[nodiscard]] inline std::optional<bool> IsInside(const Reading& reading) {
  if (!reading.low && !reading.high) return std::nullopt;
  return (!reading.low || reading.value >= *reading.low) && (!reading.high || reading.value <= *reading.high);
}

/// Something whole that a run has made.
struct RunDocument {
  /// "eeprom.sent", "flash.100".
  std::string_view role;
  /// Byte by byte.
  std::string content;
};

/// "gsm" for element 0 of `RFParams.BAND`, "dcs" for element 1: in the names of readings.
[[nodiscard]] inline std::string_view BandWord(std::size_t band) { return band == 0 ? "gsm" : "dcs"; }

}  // namespace orvane
