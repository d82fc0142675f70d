#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "records/record_store.h"

namespace orvane {

/// What became of a run, as it is coloured.
enum class Outcome {
  /// A PASS with all steps complete, or a run by hand that came to its end.
  Good,
  /// A PASS that is not complete.
  Doubtful,
  Bad,
  /// Stopped, abandoned, or still under way.
  Open,
};
[[nodiscard]] Outcome OutcomeOf(const std::optional<RunEnd>& end);

/// In a word or two: "PASS", "PASS, not complete", "FAIL", "stopped", "done" (by hand), "under way".
[[nodiscard]] std::string OutcomeText(const std::optional<RunEnd>& end);

/// "2.23 s"; empty for a run whose station died, of which nobody knows, and for one under way.
[[nodiscard]] std::string TookText(const std::optional<RunEnd>& end);

/// As much of an id as tells its millisecond, which tells runs of one station apart.
[[nodiscard]] std::string_view ShortId(std::string_view id);
/// How much of each id is needed to tell these runs apart, but no less than `ShortId`.
[[nodiscard]] std::size_t TellingLength(const std::vector<RunSummary>& runs);

/// "2026-11-22 03:04:05".
[[nodiscard]] std::string ClockText(std::int64_t milliseconds);

}  // namespace orvane
