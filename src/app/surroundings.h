#pragma once

#include <string>
#include <string_view>

#include "app/command_line.h"

namespace orvane {

/// What a station is connected to, in the words of a person at it.
struct Surroundings {
  /// No device of this machine is touched: what is measured and written is a model's.
  bool isVirtual = false;
  /// Of a virtual bench its unit and its faults: "seed 7, faults pa-weak, battery".
  std::string unit{};
  ComDevices devices{};
  /// The ways to the instruments: "GPIB native, 1 by tcp:bench7:5025".
  std::string instruments{};

  /// `port`: what the station takes for the Target's line, "COM1".
  [[nodiscard]] std::string Details(std::string_view port) const;
};

[[nodiscard]] Surroundings SurroundingsOf(const Options& options);

}  // namespace orvane
