#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bench/handset.h"

namespace orvane::proofs {

/// A road as it looks from outside: the unit as nature made it, what it keeps now, and what the operator had set.
struct Subject {
  std::uint64_t seed = 1;
  bench::Defects defects;
  bench::Memory kept;
  /// The installed files of parameters and ramp tables.
  std::string parameters;
  std::string ramps;
  /// Whether the unit's EEPROM was to be written, and the parameter file that was.
  bool toEeprom = true;
  std::optional<std::string> file;
  /// The tolerance box: below 0.2 dB the tolerances follow the power.
  double toleranceSetting = 0.1;
  /// Where the generator stands beside a channel's carrier at the readings of the receive run: one or two of them.
  std::vector<double> offsetsMHz{0.067, -0.067};
};

/// Whether the unit is what a complete PASS says: that its image, its flash table and its file hold what was
/// installed and what was calibrated, that it radiates its target powers with them on every level, that the channel
/// codes fit, and that the receiver's gain and compensation are those of its readings. Every line is one objection.
[[nodiscard]] std::vector<std::string> Audit(const Subject& subject);

}  // namespace orvane::proofs
