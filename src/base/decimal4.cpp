#include "base/decimal4.h"

#include <cmath>
#include <limits>

#include "base/failure.h"
#include "base/parsed_number.h"

namespace orvane {
namespace {

__extension__ using Wide = __int128;

Decimal4 Narrowed(Wide raw) {
  if (raw < std::numeric_limits<std::int64_t>::min() || raw > std::numeric_limits<std::int64_t>::max()) {
    throw StationFailure("Overflow: the result is too large.");
  }
  return Decimal4::FromRaw(static_cast<std::int64_t>(raw));
}

/// Quotient rounded half to even.
Wide Divided(Wide dividend, Wide divisor) {
  Wide quotient = dividend / divisor;
  const Wide rest = dividend % divisor;
  const Wide twice = (rest < 0 ? -rest : rest) * 2;
  const Wide size = divisor < 0 ? -divisor : divisor;
  if (twice > size || (twice == size && quotient % 2 != 0)) quotient += ((dividend < 0) == (divisor < 0)) ? 1 : -1;
  return quotient;
}

}  // namespace

Decimal4 Decimal4::FromDouble(double value) {
  const double scaled = value * kScale;
  if (!(std::fabs(scaled) < 9.2e18)) throw StationFailure("Overflow: " + NumberText(value) + " is too large.");
  const double below = std::floor(scaled);
  const double part = scaled - below;
  auto raw = static_cast<std::int64_t>(below);
  if (part > 0.5 || (part == 0.5 && raw % 2 != 0)) ++raw;
  return FromRaw(raw);
}

Decimal4 Decimal4::FromText(std::string_view text) { return FromRaw(ParseNumber(text).Scaled(4)); }

std::string Decimal4::Text() const {
  const bool negative = raw_ < 0;
  const std::uint64_t size = negative ? 0 - static_cast<std::uint64_t>(raw_) : static_cast<std::uint64_t>(raw_);
  std::string text = negative ? "-" : "";
  text += std::to_string(size / kScale);
  if (size % kScale == 0) return text;
  std::string places = std::to_string(size % kScale + kScale).substr(1);
  places.erase(places.find_last_not_of('0') + 1);
  return text + "." + places;
}

void Decimal4::FailNegation() { throw StationFailure("Overflow: the result is too large."); }

Integer Decimal4::ToInteger() const { return CheckedInteger(static_cast<std::int64_t>(Divided(raw_, kScale))); }

Decimal4 operator+(Decimal4 a, Decimal4 b) { return Narrowed(Wide{a.raw_} + b.raw_); }
Decimal4 operator-(Decimal4 a, Decimal4 b) { return Narrowed(Wide{a.raw_} - b.raw_); }
Decimal4 operator*(Decimal4 a, Decimal4 b) { return Narrowed(Divided(Wide{a.raw_} * b.raw_, Decimal4::kScale)); }
Decimal4 operator/(Decimal4 a, Decimal4 b) {
  if (b.raw_ == 0) throw StationFailure("Division by zero.");
  return Narrowed(Divided(Wide{a.raw_} * Decimal4::kScale, b.raw_));
}

}  // namespace orvane
