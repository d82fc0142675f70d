#include "link/statistics.h"

#include <algorithm>
#include <cmath>

#include "base/failure.h"

namespace orvane {

std::string BitString(Long& value) {
  std::string bits;
  for (; value > 0; value /= 2) bits += value % 2 == 0 ? '0' : '1';
  std::reverse(bits.begin(), bits.end());
  return bits;
}

Long BitsToLong(std::string_view bits) {
  std::int64_t value = 0;
  for (const char bit : bits) value = CheckedLong(value * 2 + (bit - '0'));
  return static_cast<Long>(value);
}

Integer BitsToHundredths(std::string_view bits) {
  Decimal4 sum;
  double weight = 1;
  for (const char bit : bits) {
    weight /= 2;
    if (bit == '1') sum = sum + Decimal4::FromDouble(weight);
  }
  return (sum * 100).ToInteger();
}

Decimal4 StatisticValue(Long value, std::size_t fractionBits) {
  const Long reported = value;
  const std::string bits = BitString(value);
  if (bits.size() < fractionBits) {
    throw StationFailure("The Target reports " + std::to_string(reported) +
                         ", which is too small to be a statistic.");
  }
  const std::string_view digits = bits;
  const std::size_t point = digits.size() - fractionBits;
  return Decimal4::FromText(std::to_string(BitsToLong(digits.substr(0, point))) + "." +
                            std::to_string(BitsToHundredths(digits.substr(point))));
}

}  // namespace orvane
