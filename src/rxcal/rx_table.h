#pragma once

#include <array>

#include "base/numbers.h"

namespace orvane {

/// A channel and the level read or interpolated there, in tenths of a dB.
struct RxPoint {
  Integer channel = 0;
  Integer level = 0;
  friend bool operator==(const RxPoint&, const RxPoint&) = default;
};

/// Breakpoint channels of a band's seven rows.
using RxGrid = std::array<Integer, 7>;
/// 0..124 in steps of 20.667, and 512..885 in steps of 62.17, each rounded.
inline constexpr RxGrid kGsmGrid{0, 21, 41, 62, 83, 103, 124};
inline constexpr RxGrid kDcsGrid{512, 574, 636, 699, 761, 823, 885};

/// The seven rows of one band, built from its measured channels in measuring order. A measured channel takes the
/// row of the breakpoint that it is nearest to; the rows between two measured ones are walked, each from the
/// rounded row before it. Every member throws StationFailure when two neighbours are one channel, or a 16-bit
/// number overflows.
class RxBandTable {
 public:
  RxBandTable(const RxGrid& grid, RxPoint first);

  /// Places an inner channel; `before` is the one measured ahead of it. Half-way between two breakpoints counts to
  /// the upper one. @return false when it lies in no bracket from the last placed row on: the rows there keep the
  /// grid's channels.
  bool PlaceInner(RxPoint before, RxPoint point);
  /// Places the last channel in the last row and fills the rows up to it.
  void PlaceLast(RxPoint before, RxPoint last);

  [[nodiscard]] const std::array<RxPoint, 7>& Rows() const { return rows_; }

 private:
  RxGrid grid_;
  std::array<RxPoint, 7> rows_{};
  /// Row of the point placed last.
  std::size_t start_ = 0;
};

/// The three rows of the EGSM band: the two measured channels, and 999 between them.
[[nodiscard]] std::array<RxPoint, 3> EgsmRows(RxPoint low, RxPoint high);

/// What the test set sends during the whole run.
inline constexpr int kGeneratorLevelDbm = -74;

/// Gain of the receive path in dB, from the level read at the reference channel.
[[nodiscard]] Integer GMagicOf(Integer level, Integer rxSetValue);
/// Twice the gain, which is what the record holds, must lie within these, in half dB.
inline constexpr Integer kLowestGMagic = 171;
inline constexpr Integer kHighestGMagic = 191;
[[nodiscard]] constexpr bool IsGoodGMagic(Integer halfDb) {
  return halfDb >= kLowestGMagic && halfDb <= kHighestGMagic;
}

/// Half dB on either side that a sound receiver's compensations stay within. The run accepts more; its report tells
/// of it.
inline constexpr int kSoundCompensation = 5;

/// Difference from the reference channel's level in half dB.
[[nodiscard]] Integer CompensationOf(Integer reference, Integer level);

}  // namespace orvane
