#pragma once

#include <compare>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "base/numbers.h"

namespace orvane {

/// Fixed-point decimal with four places, held as a signed 64-bit count of ten-thousandths. Sums and differences
/// are exact; whatever must round does so half to even. Operations that leave the range throw StationFailure.
class Decimal4 {
 public:
  constexpr Decimal4() = default;
  /// A whole number.
  constexpr Decimal4(int whole) : raw_(std::int64_t{whole} * kScale) {}  // NOLINT(google-explicit-constructor)

  [[nodiscard]] static constexpr Decimal4 FromRaw(std::int64_t tenThousandths) {
    Decimal4 value;
    value.raw_ = tenThousandths;
    return value;
  }
  [[nodiscard]] static Decimal4 FromDouble(double value);
  /// @throws StationFailure when the text is no number (same forms as `ToInteger`) or does not fit.
  [[nodiscard]] static Decimal4 FromText(std::string_view text);

  [[nodiscard]] constexpr std::int64_t Raw() const { return raw_; }
  [[nodiscard]] constexpr double ToDouble() const { return static_cast<double>(raw_) / kScale; }
  /// Shortest form with up to four decimals: "943.067", "-0.5", "7".
  [[nodiscard]] std::string Text() const;
  /// Nearest whole number, half to even.
  [[nodiscard]] Integer ToInteger() const;
  [[nodiscard]] constexpr Decimal4 Abs() const { return raw_ < 0 ? -*this : *this; }

  friend constexpr bool operator==(Decimal4 a, Decimal4 b) { return a.raw_ == b.raw_; }
  friend constexpr std::strong_ordering operator<=>(Decimal4 a, Decimal4 b) { return a.raw_ <=> b.raw_; }
  friend Decimal4 operator+(Decimal4 a, Decimal4 b);
  friend Decimal4 operator-(Decimal4 a, Decimal4 b);
  friend Decimal4 operator*(Decimal4 a, Decimal4 b);
  friend Decimal4 operator/(Decimal4 a, Decimal4 b);
  friend constexpr Decimal4 operator-(Decimal4 a) {
    if (a.raw_ == std::numeric_limits<std::int64_t>::min()) FailNegation();
    return FromRaw(-a.raw_);
  }

 private:
  /// The least number has no counterpart.
  [[noreturn]] static void FailNegation();

  static constexpr std::int64_t kScale = 10000;
  std::int64_t raw_ = 0;
};

/// A constant such as `"0.25"_d4`, checked when the program is compiled: optional sign, digits, up to four decimals.
consteval Decimal4 operator""_d4(const char* text, std::size_t size) {
  std::int64_t raw = 0;
  bool negative = false;
  int decimals = -1;
  for (std::size_t i = 0; i < size; ++i) {
    const char c = text[i];
    if (i == 0 && c == '-') {
      negative = true;
    } else if (c == '.' && decimals < 0) {
      decimals = 0;
    } else if (c >= '0' && c <= '9' && decimals < 4) {
      raw = raw * 10 + (c - '0');
      if (decimals >= 0) ++decimals;
    } else {
      throw "not a constant with up to four decimals";
    }
  }
  for (int i = decimals < 0 ? 0 : decimals; i < 4; ++i) raw *= 10;
  return Decimal4::FromRaw(negative ? -raw : raw);
}

}  // namespace orvane
