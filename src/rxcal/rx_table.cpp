#include "rxcal/rx_table.h"

#include <string>

#include "base/decimal4.h"
#include "base/failure.h"

namespace orvane {
namespace {

Integer Difference(Integer a, Integer b) { return CheckedInteger(a - b); }

/// Channels from one measured point to the next.
Integer Span(RxPoint from, RxPoint to) {
  const Integer span = Difference(to.channel, from.channel);
  if (span == 0) throw StationFailure("Division by zero: channel " + std::to_string(to.channel) + " stands twice.");
  return span;
}

double SlopeBetween(RxPoint from, RxPoint to) {
  return static_cast<double>(Difference(to.level, from.level)) / Span(from, to);
}

/// The slope behind the last inner channel is held with four decimals, which makes that walk exact.
Decimal4 RoundedSlopeBetween(RxPoint from, RxPoint to) {
  return Decimal4(Difference(to.level, from.level)) / Decimal4(Span(from, to));
}

Integer Walked(RxPoint before, Integer channel, double slope) {
  return RoundToInteger(Difference(channel, before.channel) * slope + before.level);
}

Integer Walked(RxPoint before, Integer channel, Decimal4 slope) {
  return (Decimal4(Difference(channel, before.channel)) * slope + before.level).ToInteger();
}

}  // namespace

RxBandTable::RxBandTable(const RxGrid& grid, RxPoint first) : grid_(grid) { rows_[0] = first; }

bool RxBandTable::PlaceInner(RxPoint before, RxPoint point) {
  for (std::size_t j = start_; j + 1 < grid_.size(); ++j) {
    if (grid_[j + 1] < point.channel || grid_[j] >= point.channel) {
      rows_[j + 1].channel = grid_[j + 1];
      continue;
    }
    const double slope = SlopeBetween(before, point);
    const bool nearerToLower = point.channel - grid_[j] < grid_[j + 1] - point.channel;
    const std::size_t place = nearerToLower ? j : j + 1;
    rows_[place] = point;
    for (std::size_t k = start_ + 1; k < place; ++k) {
      rows_[k].level = Walked(rows_[k - 1], rows_[k].channel, slope);
    }
    grid_[place] = point.channel;
    start_ = place;
    return true;
  }
  return false;
}

void RxBandTable::PlaceLast(RxPoint before, RxPoint last) {
  rows_.back() = last;
  const Decimal4 slope = RoundedSlopeBetween(before, last);
  for (std::size_t k = start_ + 1; k + 1 < rows_.size(); ++k) {
    rows_[k] = {grid_[k], Walked(rows_[k - 1], grid_[k], slope)};
  }
}

std::array<RxPoint, 3> EgsmRows(RxPoint low, RxPoint high) {
  constexpr Integer kMiddle = 999;
  return {low, {kMiddle, Walked(low, kMiddle, SlopeBetween(low, high))}, high};
}

Integer GMagicOf(Integer level, Integer rxSetValue) {
  return RoundToInteger(level / 10.0 - rxSetValue - kGeneratorLevelDbm);
}

Integer CompensationOf(Integer reference, Integer level) {
  return RoundToInteger(CheckedInteger(2L * Difference(reference, level)) / 10.0);
}

}  // namespace orvane
