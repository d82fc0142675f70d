#pragma once

#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// How far a reading of the golden unit may lie from that of its reference record, in the reading's own unit.
struct GoldenLimit {
  /// A reading's name; a "*" in it stands for any characters: "tx.gsm.level.*.power".
  std::string pattern;
  double allowed = 0;
  /// The place in a profile, to be told of: "bench.toml:12".
  std::string where{};
  friend bool operator==(const GoldenLimit&, const GoldenLimit&) = default;
};
using GoldenLimits = std::vector<GoldenLimit>;

/// What holds where nobody says anything else.
struct GoldenDefault {
  std::string_view pattern;
  double allowed;
  /// Why so much.
  std::string_view because;
};
[[nodiscard]] std::span<const GoldenDefault> GoldenDefaults();

[[nodiscard]] bool FitsPattern(std::string_view pattern, std::string_view name);

/// Those that are given go ahead of the defaults, and of either the first that fits counts. No value: the reading is
/// not compared.
[[nodiscard]] std::optional<double> AllowedDifference(const GoldenLimits& given, std::string_view reading);

/// How long a good check counts where nobody says: a shift of the longest kind.
inline constexpr std::chrono::milliseconds kUsualCheckEvery = std::chrono::hours(12);

/// "12h", "90m", "7d": a whole number and its unit. @throws std::invalid_argument with what is wrong with it
[[nodiscard]] std::chrono::milliseconds ParseInterval(std::string_view text);

}  // namespace orvane
