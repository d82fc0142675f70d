#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "app/golden/golden_limits.h"

namespace orvane {

/// What is said about a station's golden unit.
struct GoldenOptions {
  /// Its serial number; empty: there is none.
  std::string serial{};
  /// A run in the station's store, by its id or any beginning of it, or the path of an .orvane file.
  std::string reference{};
  std::chrono::milliseconds checkEvery = kUsualCheckEvery;
  GoldenLimits limits{};
  /// Why other units may be run from the start on.
  std::optional<std::string> excuse{};
};

}  // namespace orvane
