#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvane::fuzz {

/// A text as a number, worked out from the rules of the station's texts without anything of the station: on paper,
/// digit by digit.
class PlainNumber {
 public:
  /// No value for a text that is no number.
  static std::optional<PlainNumber> Of(std::string_view text);

  /// Times 10^places, a half to the even neighbour; no value beyond 64 bits.
  [[nodiscard]] std::optional<std::int64_t> Scaled(int places) const;
  /// As the C library reads decimal texts; no value beyond the range.
  [[nodiscard]] std::optional<double> Real() const;

 private:
  bool negative_ = false;
  std::string digits_;      ///< all that were written, the point left out
  std::int64_t point_ = 0;  ///< how many of them stand ahead of the point; may lie beyond either end
};

}  // namespace orvane::fuzz
