#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/golden/golden_limits.h"
#include "records/record.h"

namespace orvane {

/// A reading of the golden unit that lies too far from its reference, or was not read at all.
struct GoldenDifference {
  std::string reading;
  /// No value when it was not read.
  std::optional<double> value{};
  /// What it should be by the reference record.
  double expected = 0;
  double allowed = 0;
  /// "GSM level 5, power: 32.0015 dBm, by the reference 31.03, limit 0.3".
  std::string words;
};

/// What came of a check.
struct GoldenFinding {
  /// Why the run was no complete PASS; empty when it was one.
  std::string shortfall;
  std::vector<GoldenDifference> differences;
  /// What the differences point to, a sentence each.
  std::vector<std::string> pointsTo;

  [[nodiscard]] bool Inside() const { return shortfall.empty() && differences.empty(); }
  /// In how many things it is not as it should be.
  [[nodiscard]] std::size_t Count() const { return differences.size() + (shortfall.empty() ? 0 : 1); }
  /// The first of them and what they point to, in some sentences; empty when it is inside.
  [[nodiscard]] std::string Text() const;
};

/// Holds a run of the golden unit against its reference record.
///
/// A search goes on until the test set reads the power that it wants, whatever lies between the set and the unit: the
/// power found says nothing of a cable. So a power is held against what the unit gave in the reference at the DAC
/// value that was found now, by the reference's own levels.
[[nodiscard]] GoldenFinding CheckGolden(const RunRecord& reference, const RunRecord& run, const GoldenLimits& limits);

/// Whether a run can be a reference, and can be a check that is passed: a whole one that ended with a complete PASS.
[[nodiscard]] bool IsCompletePass(const RunRecord& run);

}  // namespace orvane
