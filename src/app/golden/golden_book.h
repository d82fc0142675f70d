#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "app/command_line.h"
#include "records/record_store.h"

namespace orvane {

/// An engineer's word that other units may be run, whatever the golden unit says.
struct GoldenExcuse {
  std::string why;
  /// Milliseconds since 1970, UTC.
  std::int64_t untilMs = 0;
  friend bool operator==(const GoldenExcuse&, const GoldenExcuse&) = default;
};

/// Tags of each run that began under an excuse.
inline constexpr const char* kExcuseTag = "golden_excuse";
inline constexpr const char* kExcuseUntilTag = "golden_excuse_until";

/// The one that a run began under.
[[nodiscard]] std::optional<GoldenExcuse> ExcuseIn(const RunIdentity& run);

/// What a station knows of its golden unit when it starts.
struct GoldenBook {
  RunRecord reference;
  /// The last whole run of that unit on this station.
  std::optional<RunRecord> lastCheck{};
  /// The one that the station's last run began under.
  std::optional<GoldenExcuse> excuse{};
  /// Why nothing is known of the last runs; empty where it is.
  std::string fault{};
};

/// The last check and the excuse out of a store. Runs of other stations, and of benches of the other kind, do not
/// count. @throws StoreFault
void FindLastCheck(RecordStore& store, const Options& options, GoldenBook& book);

/// No value for a station that has no golden unit. @throws OptionFault for options that do not fit together, and for
/// a reference that is not there, is no complete PASS, or is of another unit.
[[nodiscard]] std::optional<GoldenBook> OpenGoldenBook(const Options& options);

}  // namespace orvane
