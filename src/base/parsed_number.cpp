#include "base/parsed_number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>

#include "base/failure.h"
#include "base/text.h"

namespace orvane {
namespace {

constexpr std::int64_t kExponentBound = 10000;

[[noreturn]] void NotANumber(std::string_view text) {
  throw StationFailure("\"" + std::string(text) + "\" is not a number.");
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsHexadecimal(std::string_view word) {
  return word.size() > 2 && word[0] == '&' && (word[1] == 'H' || word[1] == 'h');
}

constexpr std::uint8_t kNoHexDigit = 16;

/// The value of each character as a hexadecimal digit.
constexpr std::array<std::uint8_t, 256> kHexDigit = [] {
  std::array<std::uint8_t, 256> values{};
  values.fill(kNoHexDigit);
  for (std::uint8_t i = 0; i < 10; ++i) values['0' + i] = i;
  for (std::uint8_t i = 0; i < 6; ++i) values['A' + i] = values['a' + i] = static_cast<std::uint8_t>(10 + i);
  return values;
}();

[[noreturn]] void BadHexadecimal(std::string_view prefix, std::string_view digits, bool tooLarge) {
  const std::string word = std::string(prefix).append(digits);
  if (!tooLarge) NotANumber(word);
  throw StationFailure("Overflow: " + word + " does not fit 32 bits.");
}

/// `prefix` is what stands ahead of the digits, for the failure's text.
std::int64_t HexadecimalOf(std::string_view prefix, std::string_view digits) {
  std::uint64_t value = 0;
  for (const char c : digits) {
    const std::uint8_t digit = kHexDigit[static_cast<unsigned char>(c)];
    value = value * 16 + digit;
    const bool tooLarge = value > std::numeric_limits<std::uint32_t>::max();
    if (digit == kNoHexDigit || tooLarge) BadHexadecimal(prefix, digits, digit != kNoHexDigit);
  }
  if (digits.empty()) BadHexadecimal(prefix, digits, false);
  if (digits.size() <= 4) return static_cast<std::int16_t>(value);
  return digits.size() == 8 ? static_cast<std::int32_t>(value) : static_cast<std::int64_t>(value);
}

/// A word of nothing but a sign and a few digits, as nearly all are; no value for any other.
std::optional<std::int64_t> PlainWhole(std::string_view word) {
  constexpr std::size_t kDigitsThatAlwaysFit = 18;
  const bool negative = word.starts_with('-');
  if (negative) word.remove_prefix(1);
  if (word.empty() || word.size() > kDigitsThatAlwaysFit) return std::nullopt;
  std::int64_t value = 0;
  for (const char c : word) {
    if (!IsDigit(c)) return std::nullopt;
    value = value * 10 + (c - '0');
  }
  return negative ? -value : value;
}

/// A whole number in any of the forms that a number may have.
std::int64_t AnyWhole(std::string_view text) {
  const std::string_view word = TrimBlanksAndLineEnds(text);
  if (IsHexadecimal(word)) return HexadecimalOf(word.substr(0, 2), word.substr(2));
  return ParseNumber(text).Scaled(0);
}

}  // namespace

ParsedNumber::ParsedNumber(bool negative, std::string digits, std::int64_t exponent)
    : negative_(negative), digits_(std::move(digits)), exponent_(exponent) {
  digits_.erase(0, std::min(digits_.find_first_not_of('0'), digits_.size()));
}

std::int64_t ParsedNumber::Scaled(int places) const {
  if (digits_.empty()) return 0;
  const auto overflow = [] { throw StationFailure("Overflow: the number is too large."); };
  const std::int64_t shift = exponent_ + places;
  const auto size = static_cast<std::int64_t>(digits_.size());
  if (size + shift > 19) overflow();
  if (size + shift < 0) return 0;
  const auto kept = static_cast<std::size_t>(std::min(size, size + shift));
  // The least number is one further from zero than the greatest.
  const std::uint64_t limit = std::uint64_t{std::numeric_limits<std::int64_t>::max()} + (negative_ ? 1 : 0);
  std::uint64_t value = 0;
  const auto push = [&](unsigned digit) {
    if (value > (limit - digit) / 10) overflow();
    value = value * 10 + digit;
  };
  for (std::size_t i = 0; i < kept; ++i) push(static_cast<unsigned>(digits_[i] - '0'));
  for (std::int64_t i = 0; i < shift; ++i) push(0);
  if (kept < digits_.size()) {
    const bool more = digits_.find_first_not_of('0', kept + 1) != std::string::npos;
    const char next = digits_[kept];
    if (next > '5' || (next == '5' && (more || value % 2 != 0))) ++value;
    if (value > limit) overflow();
  }
  return static_cast<std::int64_t>(negative_ ? 0 - value : value);
}

double ParsedNumber::ToDouble() const {
  if (digits_.empty()) return 0;
  const std::string text = (negative_ ? "-" : "") + digits_ + "e" + std::to_string(exponent_);
  double value = 0;
  if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc()) return value;
  // from_chars reports both ends of the range in one way: too small is nothing, too large is a failure.
  if (static_cast<std::int64_t>(digits_.size()) + exponent_ <= 0) return 0;
  throw StationFailure("Overflow: the number is too large.");
}

ParsedNumber ParseNumber(std::string_view text) {
  const std::string_view word = TrimBlanksAndLineEnds(text);
  if (IsHexadecimal(word)) {
    const std::int64_t number = HexadecimalOf(word.substr(0, 2), word.substr(2));
    return {number < 0, std::to_string(number < 0 ? -number : number), 0};
  }
  std::size_t at = 0;
  const auto more = [&] { return at < word.size(); };
  const bool negative = more() && word[at] == '-';
  if (more() && (word[at] == '-' || word[at] == '+')) ++at;
  std::string digits;
  std::int64_t exponent = 0;
  while (more() && IsDigit(word[at])) digits += word[at++];
  if (more() && word[at] == '.') {
    ++at;
    for (; more() && IsDigit(word[at]); --exponent) digits += word[at++];
  }
  if (digits.empty()) NotANumber(text);
  if (more() && (word[at] == 'e' || word[at] == 'E')) {
    ++at;
    if (more() && word[at] == '+') ++at;
    int written = 0;
    const auto* end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data() + at, end, written);
    if (error == std::errc::invalid_argument || (word[at - 1] == '+' && more() && word[at] == '-')) NotANumber(text);
    const bool huge = error == std::errc::result_out_of_range || std::abs(std::int64_t{written}) > kExponentBound;
    if (huge) {
      const bool small = at < word.size() && word[at] == '-';
      written = static_cast<int>(small ? -kExponentBound : kExponentBound);
    }
    exponent += written;
    at = static_cast<std::size_t>(stop - word.data());
  }
  if (more()) NotANumber(text);
  return {negative, std::move(digits), exponent};
}

std::int64_t ParseHexadecimal(std::string_view digits) { return HexadecimalOf("&H", digits); }

std::int64_t ParseWhole(std::string_view text) {
  if (IsHexadecimal(text) && kHexDigit[static_cast<unsigned char>(text.back())] != kNoHexDigit) {
    return HexadecimalOf(text.substr(0, 2), text.substr(2));
  }
  if (const auto plain = PlainWhole(text)) return *plain;
  return AnyWhole(text);
}

}  // namespace orvane
