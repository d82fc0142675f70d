#pragma once

#include <string>
#include <string_view>

#include "base/decimal4.h"
#include "base/numbers.h"

namespace orvane {

/// Binary digits of a positive value, most significant first, without leading zeros; 0 gives an empty text. Uses the
/// value up: it is 0 afterwards.
[[nodiscard]] std::string BitString(Long& value);

/// Plain binary value of digits, the rightmost weighing 1. @throws StationFailure on overflow.
[[nodiscard]] Long BitsToLong(std::string_view bits);

/// Fraction digits, the first weighing a half, in hundredths: each weight is rounded to four decimals, the sum to a
/// whole hundredth.
[[nodiscard]] Integer BitsToHundredths(std::string_view bits);

/// A statistic whose last `fractionBits` binary digits are its fraction. The hundredths stand behind the point
/// without leading zeros, so that three of them read as 0.3: consumers are built on it.
/// @throws StationFailure for a value of fewer digits than that, which is no measurement.
[[nodiscard]] Decimal4 StatisticValue(Long value, std::size_t fractionBits);

}  // namespace orvane
