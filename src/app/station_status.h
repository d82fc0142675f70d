#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "panels/station_panels.h"
#include "platform/event_loop.h"
#include "platform/serial_control.h"
#include "state/station_state.h"

namespace orvane {

/// How a station stands and how far its run has come, for whoever wants to show it. It looks on and never acts, and
/// lives as long as the station.
class StationStatus {
 public:
  enum class Link { Closed, Open, Waiting, NoReply };
  struct Progress {
    int done = 0;
    int of = 0;
    friend bool operator==(const Progress&, const Progress&) = default;
  };

  StationStatus(const EventLoop& loop, const SerialControl& line, StationState& state, StationPanels& panels);
  StationStatus(const StationStatus&) = delete;
  StationStatus& operator=(const StationStatus&) = delete;

  /// What the station takes for the Target's line: "COM1".
  [[nodiscard]] const std::string& Port() const { return panels_.main.cboPort.Text(); }
  /// `NoReply`: the last command brought none.
  [[nodiscard]] Link LinkState() const;

  /// Whether a run is under way, a whole one or one band by hand.
  [[nodiscard]] bool Running() const { return running_; }
  /// Whether an operator has asked the run under way to stop, and not taken it back.
  [[nodiscard]] bool StopAsked() const { return running_ && state_.cal.stopStands && state_.cal.CalStopRequested; }
  /// What a stop does at this point of a run: "stops behind this level".
  [[nodiscard]] std::string_view StopWords() const;
  /// "Transmit DCS: DCS level 7, pass 3"; between runs what the last whole one has come to. Behind it a failure of
  /// the supply or the load, until that is initialized again, and what could not be made sure to be off.
  [[nodiscard]] std::string Stage() const;
  /// Of the run under way, or of the last one; no value before the first.
  [[nodiscard]] std::optional<TimePoint> Elapsed() const;
  /// Channels, levels and steps of a whole run that are done. It never goes back within a run, and it comes to its
  /// end only when everything was done.
  [[nodiscard]] std::optional<Progress> WholeRun() const;
  /// Who it is to the station that stands at an address of the bus: "test set", "supply", "load"; else "instrument".
  [[nodiscard]] std::string_view InstrumentAt(Integer address) const;
  /// Of the parameters that are being moved to or from the Target.
  [[nodiscard]] std::optional<Progress> Transfer() const;

 private:
  void FollowRuns();
  void FollowSteps();
  void CountSearches();
  int& DoneIn(RunStep step) { return done_.at(static_cast<std::size_t>(step)); }
  [[nodiscard]] std::string StageOfRun() const;
  [[nodiscard]] std::string StageOfWait() const;
  [[nodiscard]] std::string StageOfStep(RunStep step) const;
  [[nodiscard]] std::string StageOfSearch() const;

  const EventLoop& loop_;
  const SerialControl& line_;
  StationState& state_;
  StationPanels& panels_;
  bool running_ = false;
  std::optional<TimePoint> start_;
  TimePoint end_{};
  /// The run under way, or the last one, is a whole one.
  bool whole_ = false;
  /// Pieces done in each step.
  std::array<int, kRunSteps.size()> done_{};
  /// The receive step has come to its channels.
  bool receiving_ = false;
};

/// "0:07", "12:40".
[[nodiscard]] std::string MinutesText(TimePoint span);

}  // namespace orvane
