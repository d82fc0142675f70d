#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "app/command_line.h"
#include "app/keeping/record_keeper.h"
#include "app/keeping/run_documents.h"
#include "app/station.h"
#include "app/unit_identity.h"
#include "platform/event_loop.h"
#include "records/run_recorder.h"

namespace orvane {

/// Milliseconds since 1970, UTC.
[[nodiscard]] std::int64_t WallClockMs();

/// Gives each run of a station to its store: who and what it was of, what the recorder gathered, and where it went.
class StationRecords {
 public:
  /// `options.records` says where. All of these outlive it, and the recorder is followed for as long.
  StationRecords(const Options& options, EventLoop& loop, RunRecorder& recorder, Station& station,
                 const UnitIdentity& unit);
  StationRecords(const StationRecords&) = delete;
  StationRecords& operator=(const StationRecords&) = delete;
  ~StationRecords();

  /// What became of a record, and any other fault of the store, with an empty `run`. As an event of the loop.
  std::function<void(const Kept& kept)> onKept;
  /// A run begins: what else is to stand among what it is of.
  std::function<void(RunIdentity& run)> onBegin;
  /// A run is over, and this is its record: what else is to stand in it.
  std::function<void(RunRecord& record)> onEnd;
  /// How long the run that is over has waited for instruments that other stations use too.
  std::function<TimePoint()> waited = [] { return TimePoint{0}; };

  /// Whether the record of a run that is over waits, for something that belongs into it.
  std::function<bool()> waits = [] { return false; };
  /// It waits no longer. `notOff`: what could not be made sure to be off behind the run; empty when nothing was.
  void GoOn(const std::string& notOff);

  /// Who outlives the station is told, as a run begins, of the file in which something can be left for its record,
  /// and behind it of none.
  std::function<void(const std::string& file)> onNoteFile = [](const std::string&) {};

  /// A run that is over has its record now, not a turn of the loop later.
  void CloseWhatIsOver() { recorder_.Flush(); }
  /// The station ends: what is not told yet is told now.
  void Finish();

 private:
  [[nodiscard]] RecorderLinks Links();
  [[nodiscard]] RunIdentity IdentityOf(RunKind kind);
  void AddWait(std::map<std::string, std::string>& tags) const;
  [[nodiscard]] KeeperWays Ways() const;
  void Begin(const RunIdentity& run);
  void Take(RunRecord record);
  void Keep(RunRecord record);
  /// On the keeper's thread.
  void Hear(const Kept& kept);
  void TellWhatWasHeard();

  const Options& options_;
  EventLoop& loop_;
  RunRecorder& recorder_;
  const UnitIdentity& unit_;
  RunDocuments documents_;
  std::random_device chance_;
  std::optional<RunRecord> waiting_;
  /// Takes the keeper's word to the station's thread.
  class Ear final : public QObject {
   public:
    explicit Ear(std::function<void()> onCall) : onCall_(std::move(onCall)) {}
    /// On any thread: the call comes on this one's.
    void Call();

   private:
    bool event(QEvent* event) override;
    std::function<void()> onCall_;
  };
  Ear ear_;
  std::mutex mutex_;
  std::vector<Kept> heard_;
  RecordKeeper keeper_;
};

}  // namespace orvane
