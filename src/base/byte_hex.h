#pragma once

#include <array>
#include <string>

#include "base/numbers.h"

namespace orvane {

/// The two texts of a value that stands in two bytes: the lower one holds the last two hexadecimal digits, the upper
/// one those ahead of them, or "00" for none. A lower text with nothing ahead of it may have one digit; a negative
/// value counts with its lower 16 bits.
struct WordInHex {
  std::string upper;
  std::string lower;
};
[[nodiscard]] WordInHex WordToHexConvert(Long value);

/// The bytes of a value as hexadecimal texts, most significant first: the first `byteCount` entries of the result
/// are filled, the others stay empty. The texts are not all of two digits: a value of 0 or more that is too large
/// for one byte comes whole in one text, and with two bytes the upper text holds all digits but the last two.
/// A byte count outside 1..4 fills nothing; 3 works only for negative values.
[[nodiscard]] std::array<std::string, 5> ByteToLongHexConvert(Integer byteCount, Long value);

}  // namespace orvane
