#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/keeping/run_documents.h"
#include "app/recorded_ports.h"
#include "app/station.h"
#include "platform/virtual_event_loop.h"

namespace orvane::test {

/// The records of one station in virtual time, kept here.
class KeptRecords {
 public:
  /// Around the world that the station will stand in.
  explicit KeptRecords(const StationPorts& plain) : ports(plain) {}

  /// The station stands in `ports`.
  void Follow(Station& station, bool verifiesEeprom = false) {
    documents_.emplace(station.State(), station.Panels(), verifiesEeprom);
    ports.recorder.Follow(station.State(), Links());
    station.Nest().onAct = [this](const std::string& where, std::string_view how, std::string_view value) {
      ports.recorder.Acted(where, how, value);
    };
    station.Nest().onFailure.emplace_back([this](const std::string& text) { ports.recorder.Stopped(text); });
  }

  /// What is closed behind a run comes with the next turn of the loop.
  void Settle() {
    while (ports.recorder.Recording()) ports.recorder.Loop().Yield(ports.recorder.Loop().Now());
  }

  RecordedPorts ports;
  /// Ahead of the first byte of each run.
  std::function<void()> onBegun = [] {};
  std::vector<RunRecord> records;
  int begun = 0;
  /// How far the clock on the wall is from the loop's.
  TimePoint clockOff{0};
  /// What was told of the trace while the run went on.
  std::string grown;

 private:
  RecorderLinks Links() {
    return {[this](RunKind kind) {
              RunIdentity run;
              run.id = "run " + std::to_string(begun);
              run.kind = RunKindText(kind);
              return run;
            },
            [this] {
              const auto now = ports.recorder.Loop().Now() + clockOff;
              return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
            },
            [this] { return documents_->State(); },
            [this] { return documents_->Before(); },
            [this] { return documents_->After(); },
            [this](const RunIdentity&) {
              ++begun;
              onBegun();
            },
            [this](const std::string&, const std::string& bytes) { grown += bytes; },
            [this](RunRecord record) { records.push_back(std::move(record)); }};
  }

  std::optional<RunDocuments> documents_;
};

}  // namespace orvane::test
