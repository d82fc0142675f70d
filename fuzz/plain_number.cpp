#include "plain_number.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>

namespace orvane::fuzz {
namespace {

/// Further out a number of any length is nothing or too much.
constexpr std::int64_t kFar = 10000;

bool IsOneOf(char c, std::string_view set) { return set.find(c) != std::string_view::npos; }

std::string_view Bare(std::string_view text) {
  while (!text.empty() && IsOneOf(text.front(), " \t\r\n")) text.remove_prefix(1);
  while (!text.empty() && IsOneOf(text.back(), " \t\r\n")) text.remove_suffix(1);
  return text;
}

/// Takes leading decimal digits off.
std::string_view TakeDigits(std::string_view& text) {
  const std::string_view digits = text.substr(0, text.find_first_not_of("0123456789"));
  text.remove_prefix(digits.size());
  return digits;
}

bool TakeOneOf(std::string_view& text, std::string_view set) {
  if (text.empty() || !IsOneOf(text.front(), set)) return false;
  text.remove_prefix(1);
  return true;
}

/// No value unless the text is 1 to 8 hexadecimal digits behind any number of zeros; the width counts the zeros.
std::optional<std::int64_t> OfHexadecimal(std::string_view digits) {
  std::int64_t value = 0;
  for (const char c : digits) {
    const auto at = std::string_view("0123456789abcdef").find(static_cast<char>(std::tolower(c)));
    if (at == std::string_view::npos) return std::nullopt;
    value = value * 16 + static_cast<std::int64_t>(at);
    if (value > 0xFFFFFFFFLL) return std::nullopt;
  }
  if (digits.size() <= 4 && value >= 0x8000) return value - 0x10000;
  if (digits.size() == 8 && value >= 0x80000000LL) return value - 0x100000000LL;
  return value;
}

}  // namespace

std::optional<PlainNumber> PlainNumber::Of(std::string_view text) {
  PlainNumber number;
  text = Bare(text);
  if (text.size() > 2 && text[0] == '&' && IsOneOf(text[1], "Hh")) {
    const auto value = OfHexadecimal(text.substr(2));
    if (!value) return std::nullopt;
    number.negative_ = *value < 0;
    number.digits_ = std::to_string(std::abs(*value));
    number.point_ = static_cast<std::int64_t>(number.digits_.size());
    return number;
  }
  number.negative_ = !text.empty() && text.front() == '-';
  TakeOneOf(text, "+-");
  number.digits_ = TakeDigits(text);
  number.point_ = static_cast<std::int64_t>(number.digits_.size());
  if (TakeOneOf(text, ".")) number.digits_ += TakeDigits(text);
  if (number.digits_.empty()) return std::nullopt;
  if (TakeOneOf(text, "eE")) {
    const bool small = !text.empty() && text.front() == '-';
    TakeOneOf(text, "+-");
    const std::string_view written = TakeDigits(text);
    if (written.empty()) return std::nullopt;
    std::int64_t exponent = 0;
    for (const char c : written) exponent = std::min(kFar, exponent * 10 + (c - '0'));
    number.point_ += small ? -exponent : exponent;
  }
  if (!text.empty()) return std::nullopt;
  return number;
}

std::optional<std::int64_t> PlainNumber::Scaled(int places) const {
  const auto zeros = digits_.find_first_not_of('0');
  if (zeros == std::string::npos) return 0;
  const auto first = static_cast<std::int64_t>(zeros);
  const std::int64_t point = point_ + places;
  if (point - first > 19) return std::nullopt;
  // The digits ahead of the point and those behind it, as two texts.
  std::string whole;
  std::string part = digits_;
  if (point <= 0) {
    part.insert(0, static_cast<std::size_t>(-point), '0');
  } else {
    whole = digits_.substr(0, static_cast<std::size_t>(point));
    whole.resize(static_cast<std::size_t>(point), '0');
    part.erase(0, static_cast<std::size_t>(point));
  }
  __extension__ using Wide = __int128;
  Wide value = 0;
  for (const char c : whole) value = value * 10 + (c - '0');
  const bool above =
      !part.empty() && (part[0] > '5' || (part[0] == '5' && part.find_first_not_of('0', 1) != part.npos));
  const bool half = !part.empty() && part[0] == '5' && !above;
  if (above || (half && value % 2 != 0)) ++value;
  if (negative_) value = -value;
  if (value < Wide{INT64_MIN} || value > Wide{INT64_MAX}) return std::nullopt;
  return static_cast<std::int64_t>(value);
}

std::optional<double> PlainNumber::Real() const {
  const std::string text = (negative_ ? "-0." : "0.") + digits_ + "e" + std::to_string(point_);
  const double value = std::strtod(text.c_str(), nullptr);
  return std::isinf(value) ? std::nullopt : std::optional(value);
}

}  // namespace orvane::fuzz
