#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/event_loop.h"
#include "records/record.h"
#include "records/recorded_wires.h"
#include "records/wire_log.h"
#include "state/station_state.h"

namespace orvane {

/// What the recorder asks for, and whom it tells.
struct RecorderLinks {
  /// Who and what the run is of; asked when it begins.
  std::function<RunIdentity(RunKind kind)> identity;
  /// Milliseconds since 1970, UTC.
  std::function<std::int64_t()> wallClock;
  /// What the station knows, beside its panels and tables.
  std::function<std::string()> state;
  /// What the run begins with, and what it has made.
  std::function<std::vector<RecordedDocument>()> documentsBefore;
  std::function<std::vector<RecordedDocument>()> documentsAfter;
  /// A run begins: ahead of its first byte.
  std::function<void(const RunIdentity& run)> begun;
  /// So much of its trace has come to what was told before: a station that dies leaves that.
  std::function<void(const std::string& run, std::string bytes)> grown;
  /// It is over, and this is all of it.
  std::function<void(RunRecord record)> finished;
};

/// Gathers the record of each run by listening: to the report, the searches, the wires and the boxes. It never acts
/// on the station, and between two runs it does nothing.
class RunRecorder final : public WireListener {
 public:
  explicit RunRecorder(EventLoop& loop);
  ~RunRecorder() override;

  /// From now on. The state must live as long as this, or longer.
  void Follow(StationState& state, RecorderLinks links);

  /// A failure has stopped what was under way.
  void Stopped(const std::string& text);
  /// An operator's act.
  void Acted(const std::string& where, std::string_view how, std::string_view value);
  /// The station ends: a run whose end is not told yet is told now.
  void Flush();
  [[nodiscard]] EventLoop& Loop() { return loop_; }
  [[nodiscard]] bool Recording() const { return run_ != nullptr; }

  void Note(std::string_view link, WireEvent event, std::string_view bytes) override;
  void MessageBegins() override;
  void MessageIsOver() override;
  std::size_t BoxOpened(const Box& box) override;
  void BoxAnswered(std::size_t mark, BoxButton answer) override;

 private:
  struct Run;

  void Begin(RunKind kind);
  [[nodiscard]] bool Listening() const;
  void TellGrowth(TimePoint now);
  void IsOver();
  void Close();
  void Read(const Reading& reading);
  void Keep(const RunDocument& document);
  void Passed(const SearchPass& pass);
  void StepEntered(RunStep step);
  void StepLeft(const StepRecord& step);
  [[nodiscard]] double Now() const;
  [[nodiscard]] RunEnd EndOfRun() const;
  void TellTimes();

  EventLoop& loop_;
  StationState* state_ = nullptr;
  RecorderLinks links_;
  std::unique_ptr<Run> run_;
  /// Those events of the loop which were posted for an earlier run find another number.
  std::shared_ptr<long> count_ = std::make_shared<long>(0);
};

}  // namespace orvane
