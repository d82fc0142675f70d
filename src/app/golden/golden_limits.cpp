#include "app/golden/golden_limits.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>

namespace orvane {
namespace {

constexpr std::array kDefaults{
    GoldenDefault{"tx.*.power", 0.3, "dB at the same DAC value; a plug that is made anew moves it by some 0.1"},
    GoldenDefault{"rx.*.level", 10, "0.1 dB; the Target's report alone can be 0.9 dB off"},
    GoldenDefault{"rx.*.compensation", 4, "half dB; two levels stand in it"},
    GoldenDefault{"rx.*.gmagic", 2, "half dB; its smallest step"},
    GoldenDefault{"tx.*.phase.*", 2, "degrees; a test set's own spread is some 0.5"},
    GoldenDefault{"tx.*.frequency_error", 100, "hertz; 0.1 millionth of the lower carrier"},
    GoldenDefault{"battery.*", 5, "counts, some 0.03 volts; the windows of a run are 12 and 14 wide"},
};

struct UnitRow {
  char letter;
  std::chrono::milliseconds one;
};
constexpr std::array kUnits{UnitRow{'m', std::chrono::minutes(1)}, UnitRow{'h', std::chrono::hours(1)},
                            UnitRow{'d', std::chrono::days(1)}};
constexpr std::chrono::milliseconds kLongest = std::chrono::days(366);

}  // namespace

std::span<const GoldenDefault> GoldenDefaults() { return kDefaults; }

bool FitsPattern(std::string_view pattern, std::string_view name) {
  const auto star = pattern.find('*');
  if (star == std::string_view::npos) return pattern == name;
  if (!name.starts_with(pattern.substr(0, star))) return false;
  std::string_view rest = pattern.substr(star + 1);
  name.remove_prefix(star);
  // Each piece between two stars is taken where it comes first: what is left for the others is most then.
  for (auto next = rest.find('*'); next != std::string_view::npos; next = rest.find('*')) {
    const std::string_view piece = rest.substr(0, next);
    const auto at = name.find(piece);
    if (at == std::string_view::npos) return false;
    name.remove_prefix(at + piece.size());
    rest.remove_prefix(next + 1);
  }
  return name.ends_with(rest);
}

std::optional<double> AllowedDifference(const GoldenLimits& given, std::string_view reading) {
  const auto fits = [reading](const auto& limit) { return FitsPattern(limit.pattern, reading); };
  if (const auto hit = std::find_if(given.begin(), given.end(), fits); hit != given.end()) return hit->allowed;
  const auto* const usual = std::find_if(kDefaults.begin(), kDefaults.end(), fits);
  return usual == kDefaults.end() ? std::nullopt : std::optional(usual->allowed);
}

std::chrono::milliseconds ParseInterval(std::string_view text) {
  const auto fault = [text] {
    return std::invalid_argument("\"" + std::string(text) + "\" is no time like 90m, 12h or 7d, up to 366d");
  };
  int count = 0;
  const char* const end = text.data() + text.size();
  const auto number = std::from_chars(text.data(), end, count);
  if (number.ec != std::errc() || end - number.ptr != 1) throw fault();
  const auto* const unit =
      std::find_if(kUnits.begin(), kUnits.end(), [&](const UnitRow& row) { return row.letter == *number.ptr; });
  if (unit == kUnits.end() || count <= 0 || count > kLongest / unit->one) throw fault();
  return count * unit->one;
}

}  // namespace orvane
