#include "base/byte_hex.h"

#include <string_view>
#include <utility>

namespace orvane {
namespace {

using Bytes = std::array<std::string, 5>;

/// Eight digits: byte i of four starts at digit 2 i.
Bytes OfNegative(std::size_t byteCount, std::string_view digits) {
  Bytes bytes;
  for (std::size_t i = 0; i < byteCount; ++i) bytes[i] = digits.substr(2 * (4 - byteCount + i), 2);
  return bytes;
}

Bytes OfFour(std::string_view digits) {
  Bytes bytes;
  for (std::size_t i = 0; i < 3; ++i) {
    const std::size_t below = 6 - 2 * i;
    if (digits.size() > below) {
      bytes[i] = digits.substr(0, digits.size() - below);
      digits.remove_prefix(digits.size() - below);
    } else {
      bytes[i] = "00";
    }
  }
  bytes[3] = digits;
  return bytes;
}

}  // namespace

WordInHex WordToHexConvert(Long value) {
  std::string digits = HexText(value);
  if (value < 0) return {digits.substr(4, 2), digits.substr(6, 2)};
  if (digits.size() < 3) return {"00", std::move(digits)};
  return {digits.substr(0, digits.size() - 2), digits.substr(digits.size() - 2)};
}

std::array<std::string, 5> ByteToLongHexConvert(Integer byteCount, Long value) {
  if (byteCount < 1 || byteCount > 4) return {};
  if (byteCount == 2) {
    WordInHex word = WordToHexConvert(value);
    return {std::move(word.upper), std::move(word.lower)};
  }
  const std::string digits = HexText(value);
  if (value < 0) return OfNegative(static_cast<std::size_t>(byteCount), digits);
  Bytes bytes;
  if (byteCount == 1) bytes[0] = digits;
  if (byteCount == 4) bytes = OfFour(digits);
  return bytes;
}

}  // namespace orvane
