#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvane {

/// The station's whole numbers: signed 16 and 32 bits. Conversions into them fail on overflow.
using Integer = std::int16_t;
using Long = std::int32_t;

/// Text to number. Accepted: blanks, tabs and line ends around; an optional sign; digits with an optional point
/// and an optional exponent; or "&H" and hexadecimal digits, of which one to four read as a signed 16-bit
/// value and eight as a signed 32-bit one ("&HFFFF" is -1, "&H0FFFF" is 65535). A fraction rounds half to even.
/// @throws StationFailure when the text is no number or the value does not fit.
[[nodiscard]] Integer ToInteger(std::string_view text);
[[nodiscard]] Long ToLong(std::string_view text);
[[nodiscard]] double ToDouble(std::string_view text);

/// The same of hexadecimal digits that lack their "&H".
[[nodiscard]] Integer HexToInteger(std::string_view digits);
[[nodiscard]] Long HexToLong(std::string_view digits);

/// Whether a text is, character for character, the decimal text of a whole number from `min` to `max`: "7" is, "07"
/// is not.
[[nodiscard]] bool IsPlainNumber(std::string_view text, int min, int max);

/// Nearest whole number, a half to the even neighbour.
/// @throws StationFailure when the value does not fit or is no number.
[[nodiscard]] Integer RoundToInteger(double value);
[[nodiscard]] Long RoundToLong(double value);

/// Range check of a computed value. @throws StationFailure on overflow.
[[nodiscard]] Integer CheckedInteger(std::int64_t value);
[[nodiscard]] Long CheckedLong(std::int64_t value);

/// Shortest decimal text that reads back as the same number, without exponent for the magnitudes that occur
/// here, with a leading zero: "0.5", "-0.5", "50", "943.067".
[[nodiscard]] std::string NumberText(double value);

/// Hexadecimal digits in capitals without leading zeros; a negative value gives all digits of its width.
[[nodiscard]] std::string HexText(Integer value);
[[nodiscard]] std::string HexText(Long value);
/// The same into a text that is there already.
void AssignHexText(std::string& text, Integer value);

}  // namespace orvane
