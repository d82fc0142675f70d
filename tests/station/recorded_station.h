#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/recorded_ports.h"
#include "station/virtual_station.h"

namespace orvane::test {

/// A whole station on the virtual bench that keeps the record of each of its runs here.
struct RecordedStation {
  explicit RecordedStation(const bench::BenchOptions& options = {}, const VirtualStation::OtherFiles& others = {},
                           const StationWishes& wishes = {})
      : station(options, others, wishes, [this](const StationPorts& plain) {
          ports = std::make_unique<RecordedPorts>(plain);
          return ports->Ports();
        }) {
    ports->recorder.Follow(station.State(), Links());
    station.station.Nest().onAct = [this](const std::string& where, std::string_view how, std::string_view value) {
      ports->recorder.Acted(where, how, value);
    };
    station.station.Nest().onFailure.emplace_back([this](const std::string& text) { ports->recorder.Stopped(text); });
  }
  explicit RecordedStation(std::uint64_t seed, const std::vector<std::string>& faults = {})
      : RecordedStation(OptionsOf(seed, faults)) {}

  /// The record of the one run that there was.
  [[nodiscard]] const RunRecord& TheRecord() {
    Settle();
    if (records.size() != 1) throw std::logic_error(std::to_string(records.size()) + " records, not one");
    return records.front();
  }
  /// What is closed behind a run comes with the next turn of the loop.
  void Settle() {
    while (ports->recorder.Recording()) station.loop.Yield(station.loop.Now());
  }

  std::unique_ptr<RecordedPorts> ports;
  /// Ahead of the first byte of each run: how many had gone out until then.
  std::vector<std::size_t> begun;
  std::vector<RunRecord> records;
  /// What was told of the trace while the run went on.
  std::string grown;
  VirtualStation station;

 private:
  RecorderLinks Links() {
    return {[this](RunKind kind) {
              RunIdentity run;
              run.id = "run " + std::to_string(begun.size());
              run.kind = RunKindText(kind);
              return run;
            },
            [this] { return std::chrono::duration_cast<std::chrono::milliseconds>(station.loop.Now()).count(); },
            [] { return std::string("as it stood"); },
            [] { return std::vector<RecordedDocument>{}; },
            [] { return std::vector<RecordedDocument>{}; },
            [this](const RunIdentity&) { begun.push_back(station.journal.Commands().size()); },
            [this](const std::string&, const std::string& bytes) { grown += bytes; },
            [this](RunRecord record) { records.push_back(std::move(record)); }};
  }
};

}  // namespace orvane::test
