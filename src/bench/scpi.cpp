#include "bench/scpi.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace orvane::bench {
namespace {

constexpr std::size_t kQueueLength = 20;

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
char Capital(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
bool IsSmall(char c) { return c >= 'a' && c <= 'z'; }

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && IsBlank(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

std::string_view TakeNode(std::string_view& header) {
  const std::size_t colon = header.find(':');
  const std::string_view node = header.substr(0, colon);
  header = colon == std::string_view::npos ? std::string_view{} : header.substr(colon + 1);
  return node;
}

bool NodeMatches(std::string_view pattern, std::string_view node) {
  const auto same = [](char a, char b) { return Capital(a) == Capital(b); };
  if (std::equal(pattern.begin(), pattern.end(), node.begin(), node.end(), same)) {
    return true;
  }
  std::string shortForm;
  std::copy_if(pattern.begin(), pattern.end(), std::back_inserter(shortForm), [](char c) { return !IsSmall(c); });
  return std::equal(shortForm.begin(), shortForm.end(), node.begin(), node.end(), same);
}

}  // namespace

bool HeaderMatches(std::string_view pattern, std::string_view header) {
  while (!pattern.empty() && !header.empty()) {
    if (!NodeMatches(TakeNode(pattern), TakeNode(header))) {
      return false;
    }
  }
  return pattern.empty() && header.empty();
}

std::optional<double> NumberOf(std::string_view argument) {
  constexpr std::array<std::string_view, 6> kUnits{"", "DBM", "DB", "MHZ", "V", "A"};
  argument = Trimmed(argument);
  if (argument.starts_with('+')) {
    argument.remove_prefix(1);
  }
  double value = 0;
  const auto [end, fault] = std::from_chars(argument.data(), argument.data() + argument.size(), value);
  if (fault != std::errc{} || !std::isfinite(value)) {
    return std::nullopt;
  }
  const std::string unit = CapitalsOf(argument.substr(static_cast<std::size_t>(end - argument.data())));
  return std::find(kUnits.begin(), kUnits.end(), unit) == kUnits.end() ? std::nullopt : std::optional(value);
}

std::string ReadingText(double value) {
  constexpr int kDecimals = 5;
  std::array<char, 40> digits{};
  const auto [end, fault] = std::to_chars(digits.data(), digits.data() + digits.size(), std::abs(value),
                                          std::chars_format::scientific, kDecimals);
  const std::string_view text(digits.data(), static_cast<std::size_t>(end - digits.data()));
  const std::size_t exponent = text.find('e');
  std::string reading(1, std::signbit(value) ? '-' : '+');
  reading.append(text.substr(0, exponent)).append("E").append(text.substr(exponent + 1, 1));
  const std::string_view power = text.substr(exponent + 2);
  return reading.append(power.size() < 3 ? 3 - power.size() : 0, '0').append(power);
}

std::string CapitalsOf(std::string_view argument) {
  argument = Trimmed(argument);
  std::string capitals(argument);
  std::transform(capitals.begin(), capitals.end(), capitals.begin(), Capital);
  return capitals;
}

void ErrorQueue::Push(int number, std::string_view text) {
  if (errors_.size() == kQueueLength) {
    errors_.back() = "-350,\"Queue overflow\"";
    return;
  }
  errors_.push_back(std::to_string(number) + ",\"" + std::string(text) + "\"");
}

std::string ErrorQueue::Pop() {
  if (errors_.empty()) {
    return "+0,\"No error\"";
  }
  std::string oldest = std::move(errors_.front());
  errors_.pop_front();
  return oldest;
}

const ScpiUnit* ScpiUnits::Next() {
  while (!rest_.empty()) {
    const std::size_t end = rest_.find(';');
    const std::string_view text = Trimmed(rest_.substr(0, end));
    rest_ = end == std::string_view::npos ? std::string_view{} : rest_.substr(end + 1);
    if (text.empty()) {
      continue;
    }
    const auto* const blank = std::find_if(text.begin(), text.end(), [](char c) { return c == ' ' || c == '\t'; });
    std::string_view header(text.begin(), blank);
    if (header.front() == ':') {
      header.remove_prefix(1);
    } else if (header.front() != '*') {
      header = Continued(header);
    }
    if (!header.starts_with('*')) {
      before_ = header;
    }
    unit_ = {header, Trimmed({blank, text.end()})};
    return &unit_;
  }
  return nullptr;
}

std::string_view ScpiUnits::Continued(std::string_view header) {
  const std::string_view path = before_.substr(0, before_.rfind(':') + 1);
  if (path.empty()) {
    return header;
  }
  // The path is a part of what was joined before, or of the line.
  if (path.data() != joined_.data()) {
    joined_ = path;
  }
  joined_.resize(path.size());
  return joined_.append(header);
}

}  // namespace orvane::bench
