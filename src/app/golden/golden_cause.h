#pragma once

#include <string>
#include <vector>

namespace orvane {

/// A reading that was compared, whether it lies too far off or not.
struct GoldenDeviation {
  std::string reading;
  /// From what it should be.
  double off = 0;
  double allowed = 0;
  [[nodiscard]] bool IsOutside() const;
};

/// Which cable or instrument the deviations point to, a sentence each; none when all of them are inside.
[[nodiscard]] std::vector<std::string> CausesOf(const std::vector<GoldenDeviation>& deviations);

}  // namespace orvane
