#include "base/numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/failure.h"
#include "base/parsed_number.h"

namespace orvane {
namespace {

template <class Whole>
Whole Narrowed(std::int64_t value) {
  if (value < std::numeric_limits<Whole>::min() || value > std::numeric_limits<Whole>::max()) {
    throw StationFailure("Overflow: " + std::to_string(value) + " does not fit " + std::to_string(sizeof(Whole) * 8) +
                         " bits.");
  }
  return static_cast<Whole>(value);
}

template <class Whole>
Whole Rounded(double value) {
  // 2^53 bounds what a double counts exactly; anything above fits neither width anyway.
  constexpr double kBound = 9007199254740992.0;
  if (!(std::fabs(value) < kBound)) throw StationFailure("Overflow: " + NumberText(value) + " is too large.");
  const double below = std::floor(value);
  const double part = value - below;
  auto whole = static_cast<std::int64_t>(below);
  if (part > 0.5 || (part == 0.5 && whole % 2 != 0)) ++whole;
  return Narrowed<Whole>(whole);
}

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

std::string Hex(std::uint32_t value) {
  std::array<char, 8> digits;
  auto first = digits.end();
  do {
    *--first = kHexDigits[value % 16];
    value /= 16;
  } while (value != 0);
  return {first, digits.end()};
}

}  // namespace

Integer ToInteger(std::string_view text) { return Narrowed<Integer>(ParseWhole(text)); }
Long ToLong(std::string_view text) { return Narrowed<Long>(ParseWhole(text)); }
Integer HexToInteger(std::string_view digits) { return Narrowed<Integer>(ParseHexadecimal(digits)); }
Long HexToLong(std::string_view digits) { return Narrowed<Long>(ParseHexadecimal(digits)); }
double ToDouble(std::string_view text) { return ParseNumber(text).ToDouble(); }

bool IsPlainNumber(std::string_view text, int min, int max) {
  for (int number = min; number <= max; ++number) {
    if (text == std::to_string(number)) return true;
  }
  return false;
}

Integer RoundToInteger(double value) { return Rounded<Integer>(value); }
Long RoundToLong(double value) { return Rounded<Long>(value); }

Integer CheckedInteger(std::int64_t value) { return Narrowed<Integer>(value); }
Long CheckedLong(std::int64_t value) { return Narrowed<Long>(value); }

std::string NumberText(double value) {
  if (value == 0) return "0";
  std::array<char, 400> digits{};
  const double size = std::fabs(value);
  const bool plain = size >= 1e-5 && size < 1e16;
  const auto form = plain ? std::chars_format::fixed : std::chars_format::general;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, form).ptr;
  return {digits.data(), end};
}

std::string HexText(Integer value) { return Hex(static_cast<std::uint16_t>(value)); }
std::string HexText(Long value) { return Hex(static_cast<std::uint32_t>(value)); }

void AssignHexText(std::string& text, Integer value) {
  auto rest = static_cast<std::uint16_t>(value);
  text.resize(rest < 0x10 ? 1 : rest < 0x100 ? 2 : rest < 0x1000 ? 3 : 4);
  for (auto digit = text.rbegin(); digit != text.rend(); ++digit, rest /= 16) *digit = kHexDigits[rest % 16];
}

}  // namespace orvane
