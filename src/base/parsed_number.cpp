#include "base/parsed_number.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "base/failure.h"
#include "base/text.h"

namespace orvane {
namespace {

constexpr std::int64_t kExponentBound = 10000;

[[noreturn]] void NotANumber(std::string_view text) {
  throw StationFailure("\"" + std::string(text) + "\" is not a number.");
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

ParsedNumber ParseHexadecimal(std::string_view whole, std::string_view digits) {
  std::uint32_t value = 0;
  const auto* end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, value, 16);
  if (error == std::errc::result_out_of_range) {
    throw StationFailure("Overflow: " + std::string(whole) + " does not fit 32 bits.");
  }
  if (error != std::errc() || stop != end) NotANumber(whole);
  const std::int64_t number = digits.size() <= 4   ? static_cast<std::int16_t>(value)
                              : digits.size() == 8 ? static_cast<std::int32_t>(value)
                                                   : static_cast<std::int64_t>(value);
  return {number < 0, std::to_string(number < 0 ? -number : number), 0};
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
  if (word.size() > 2 && word[0] == '&' && (word[1] == 'H' || word[1] == 'h')) {
    return ParseHexadecimal(word, word.substr(2));
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

}  // namespace orvane
