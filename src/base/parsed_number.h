#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvane {

/// A number as written: sign, significant digits, and the power of ten of the last digit. Kept exact until the
/// type that it is meant for is known, so that rounding happens once.
class ParsedNumber {
 public:
  ParsedNumber(bool negative, std::string digits, std::int64_t exponent);

  /// The value times 10^places as a whole number, half to even. @throws StationFailure on overflow of 64 bits.
  [[nodiscard]] std::int64_t Scaled(int places) const;
  [[nodiscard]] double ToDouble() const;

 private:
  bool negative_;
  std::string digits_;
  std::int64_t exponent_;
};

/// The one reader of numbers behind every conversion. @throws StationFailure when the text is no number.
[[nodiscard]] ParsedNumber ParseNumber(std::string_view text);

/// The value of "&H" and these digits. @throws StationFailure when they are none or more than 32 bits.
[[nodiscard]] std::int64_t ParseHexadecimal(std::string_view digits);

/// The same as a whole number: `ParseNumber(text).Scaled(0)`.
[[nodiscard]] std::int64_t ParseWhole(std::string_view text);

}  // namespace orvane
