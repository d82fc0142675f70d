#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "records/record.h"

namespace orvane {

/// What a unit's transmitter gives at which DAC value in one band, by the levels that a run has found: cubics
/// between them.
class PowerCurve {
 public:
  /// @param band "gsm", "dcs"
  PowerCurve(const RunRecord& run, std::string_view band);

  /// How much more it gives at `to` than at `from`; where the levels do not reach so far, by the line to the last
  /// one. There have to be two levels.
  [[nodiscard]] double Rise(double from, double to) const;
  /// How far these two lie beyond the levels; infinitely far where there are no two levels.
  [[nodiscard]] double Beyond(double from, double to) const;

 private:
  [[nodiscard]] double At(double dac) const;
  /// From the level of that number to the next, and at it.
  [[nodiscard]] double Secant(std::size_t i) const;
  [[nodiscard]] double Slope(std::size_t i) const;

  /// By DAC value; each is there once.
  std::vector<std::pair<double, double>> points_;
};

}  // namespace orvane
