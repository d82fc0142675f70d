#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "app/keeping/record_news.h"
#include "panels/station_panels.h"
#include "platform/files.h"
#include "state/station_state.h"
#include "state/table_digests.h"

namespace orvane {

/// Something that can be known to be missing without a unit.
struct Lack {
  QString what;
  QString toDo;
  /// No unit can come to a complete PASS without it; otherwise it harms no unit.
  bool stopsUnits = true;
  /// The button that mends it; null where a person has to.
  Button* mending = nullptr;
};

/// Where a look ahead of a unit looks.
struct PreflightPlaces {
  const StationState& state;
  StationPanels& panels;
  Files& files;
  /// The device behind the Target's line; empty on a virtual bench.
  std::string device{};
  /// Null where no records are kept.
  const RecordNews* records = nullptr;
  /// After so many days the cables' losses are old.
  std::optional<int> lossesDays{};
};

/// All of them at once: tables and their digests, the store of the records, the Target's line, each instrument, the
/// age of the losses. Nothing is opened and nothing sent.
[[nodiscard]] std::vector<Lack> LacksAheadOfAUnit(const PreflightPlaces& places);

}  // namespace orvane
