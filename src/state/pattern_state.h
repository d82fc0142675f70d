#pragma once

#include <array>
#include <string>

#include "state/band_levels.h"

namespace orvane {

inline constexpr int kPatterns = 3;

/// What the pattern editor edits. No run reads it and nothing saves it.
struct PatternState {
  /// APC DAC values as texts of any form, by pattern and level.
  std::array<std::array<std::string, kTablePositions>, kPatterns> APCDACPatternTable;
};

}  // namespace orvane
