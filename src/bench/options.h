#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

#include "bench/faults.h"

namespace orvane::bench {

/// What can be said about a bench, in a program or in text.
struct BenchOptions {
  std::uint64_t seed = 1;  ///< which unit is under test
  std::vector<Fault> faults;
  std::optional<std::filesystem::path> store;  ///< where the Target keeps its EEPROM and flash table
  double cableLossDb = 0.5;
  double leadLossVolts = 0.01;
  int testSetAddress = 1;  ///< primary addresses on GPIB board 0
  int supplyAddress = 2;
  int loadAddress = 5;
};

/// One KEY=VALUE. @throws BenchOptionError that names the key.
void SetBenchOption(BenchOptions& options, std::string_view keyAndValue);

/// `virtual` or `virtual:KEY=VALUE,KEY=VALUE...`; `fault` may come again and again.
/// @throws BenchOptionError
[[nodiscard]] BenchOptions ParseBenchOptions(std::string_view text);

}  // namespace orvane::bench
