#pragma once

#include <string_view>

#include "base/numbers.h"

namespace orvane {

/// Places of the tables that hold a value for every power level: those of GSM first, then those of DCS.
inline constexpr int kTablePositions = 31;

/// The power levels of a band.
struct BandLevels {
  int lowest;
  int highest;
  int positionOfLevel0;

  [[nodiscard]] constexpr int PositionOf(int level) const { return positionOfLevel0 + level; }
  /// Whether a text is, character for character, one of the levels: "7" is, "07" is not.
  [[nodiscard]] bool Has(std::string_view text) const { return IsPlainNumber(text, lowest, highest); }
};

inline constexpr BandLevels kGsmLevels{5, 19, -5};
inline constexpr BandLevels kDcsLevels{0, 15, 15};
static_assert(kGsmLevels.PositionOf(kGsmLevels.highest) + 1 == kDcsLevels.PositionOf(kDcsLevels.lowest));
static_assert(kDcsLevels.PositionOf(kDcsLevels.highest) + 1 == kTablePositions);

}  // namespace orvane
