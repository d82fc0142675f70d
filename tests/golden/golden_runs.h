#pragma once

#include <string>

#include "records/record.h"

namespace orvane::test {

/// What lies between a bench as it was and as it is.
struct BenchChange {
  /// Loss on the way from the unit to the test set that the station knows nothing of, in dB.
  double gsmLoss = 0;
  double dcsLoss = 0;
  /// Loss on the way to the unit.
  double receiveLoss = 0;
  double batteryCounts = 0;
  double hertz = 0;
};

inline constexpr const char* kGolden = "G-001";
/// 2026-11-22T03:04:05.678Z.
inline constexpr std::int64_t kFirstRunMs = 1795316645678;

/// A whole run of the golden unit that ended with a complete PASS: each level was looked for until the test set read
/// what was wanted, through whatever lay between.
[[nodiscard]] RunRecord GoldenRun(const BenchChange& change = {});

/// The reading of that name, to be looked at or changed.
[[nodiscard]] RecordedReading& ReadingIn(RunRecord& run, const std::string& name);

}  // namespace orvane::test
