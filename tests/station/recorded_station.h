#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "station/virtual_station.h"
#include "support/kept_records.h"

namespace orvane::test {

/// A whole station on the virtual bench that keeps the record of each of its runs here.
struct RecordedStation {
  explicit RecordedStation(const bench::BenchOptions& options = {}, const VirtualStation::OtherFiles& others = {},
                           const StationWishes& wishes = {})
      : station(options, others, wishes, [this](const StationPorts& plain, std::shared_ptr<void>& held) {
          auto made = std::make_shared<KeptRecords>(plain);
          kept = made.get();
          held = std::move(made);
          return kept->ports.Ports();
        }) {
    kept->Follow(station.station, wishes.verifyEeprom);
    kept->onBegun = [this] { begun.push_back(station.journal.Commands().size()); };
  }
  explicit RecordedStation(std::uint64_t seed, const std::vector<std::string>& faults = {})
      : RecordedStation(OptionsOf(seed, faults)) {}

  /// The record of the one run that there was.
  [[nodiscard]] const RunRecord& TheRecord() {
    kept->Settle();
    if (kept->records.size() != 1) throw std::logic_error(std::to_string(kept->records.size()) + " records, not one");
    return kept->records.front();
  }

  /// Held by the station's world.
  KeptRecords* kept = nullptr;
  /// Ahead of the first byte of each run: how many commands had gone out until then.
  std::vector<std::size_t> begun;
  VirtualStation station;
};

}  // namespace orvane::test
