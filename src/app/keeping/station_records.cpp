#include "app/keeping/station_records.h"

#include <QCoreApplication>
#include <QEvent>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "adapters/disk_files.h"
#include "adapters/sql/open_store.h"
#include "adapters/sql/run_writer.h"
#include "adapters/sql/spool.h"
#include "base/failure.h"
#include "base/numbers.h"
#include "records/abandoned_runs.h"
#include "records/record_bytes.h"
#include "records/run_id.h"

namespace orvane {
namespace {

/// Whatever fails beside a store is a fault of the store to whoever asked for it.
template <class Act>
void AsStoreFault(const Act& act) {
  try {
    act();
  } catch (const StationFailure& failure) {
    throw StoreFault(failure.Text());
  } catch (const DamagedRecord& damaged) {
    throw StoreFault(damaged.what());
  }
}

/// What a run has of its trace so far. Where it cannot be written the run has none when its station dies, and nothing
/// else is lost.
std::filesystem::path TraceOf(const std::string& spool, const std::string& run) {
  return std::filesystem::path(spool) / (run + ".wires");
}

/// What could not be made sure to be off when its station died.
std::filesystem::path NotOffOf(const std::string& spool, const std::string& run) {
  return std::filesystem::path(spool) / (run + ".not-off");
}

void GrowTrace(const std::string& spool, const std::string& run, const std::string& bytes) {
  std::error_code unmade;
  std::filesystem::create_directories(spool, unmade);
  std::ofstream(TraceOf(spool, run), std::ios::binary | std::ios::app) << bytes;
}

void ForgetTrace(const std::string& spool, const std::string& run) {
  std::error_code kept;
  std::filesystem::remove(TraceOf(spool, run), kept);
  std::filesystem::remove(NotOffOf(spool, run), kept);
}

void TakeTrace(const std::string& spool, RunRecord& left) {
  std::ifstream file(TraceOf(spool, left.identity.id), std::ios::binary);
  std::string content{std::istreambuf_iterator<char>(file), {}};
  if (content.empty() || left.Document("trace") != nullptr) return;
  left.documents.push_back({"trace", "trace", std::move(content)});
}

void TakeNotOff(const std::string& spool, RunRecord& left) {
  std::ifstream file(NotOffOf(spool, left.identity.id), std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  if (!text.empty()) left.boxes.push_back({std::string(kSafeOffTitle), text, "", left.end->seconds, std::nullopt});
}

DiskFiles Disk() { return {"/nonexistent", "/nonexistent"}; }

}  // namespace

std::int64_t WallClockMs() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

StationRecords::StationRecords(const Options& options, EventLoop& loop, RunRecorder& recorder, Station& station,
                               const UnitIdentity& unit)
    : options_(options),
      loop_(loop),
      recorder_(recorder),
      unit_(unit),
      documents_(station.State(), station.Panels(), options_.verifyEeprom),
      ear_([this] { loop_.Post([this] { TellWhatWasHeard(); }); }),
      keeper_(Ways(), CurrentWriter(), [this](const Kept& kept) { Hear(kept); }) {
  recorder_.Follow(station.State(), Links());
  station.Nest().onAct = [this](const std::string& where, std::string_view how, std::string_view value) {
    recorder_.Acted(where, how, value);
  };
  station.Nest().onFailure.emplace_back([this](const std::string& text) { recorder_.Stopped(text); });
}

StationRecords::~StationRecords() = default;

RecorderLinks StationRecords::Links() {
  return {[this](RunKind kind) { return IdentityOf(kind); },
          &WallClockMs,
          [this] { return documents_.State(); },
          [this] { return documents_.Before(); },
          [this] { return documents_.After(); },
          [this](const RunIdentity& run) { Begin(run); },
          [this](const std::string& run, std::string bytes) { keeper_.Grow(run, std::move(bytes)); },
          [this](RunRecord record) { Take(std::move(record)); }};
}

void StationRecords::Begin(const RunIdentity& run) {
  const std::string spool = SpoolFolderOf("sqlite:" + options_.records->string(), "");
  onNoteFile(std::filesystem::absolute(NotOffOf(spool, run.id)).string());
  keeper_.Begin(run);
}

void StationRecords::Keep(RunRecord record) {
  keeper_.Finish(std::move(record));
  onNoteFile("");
}

void StationRecords::Take(RunRecord record) {
  AddWait(record.identity.tags);
  if (onEnd) onEnd(record);
  if (!waits()) return Keep(std::move(record));
  waiting_ = std::move(record);
}

void StationRecords::GoOn(const std::string& notOff) {
  recorder_.Flush();
  if (!waiting_) return;
  // Nobody has answered it yet, and the record does not wait for that.
  if (!notOff.empty()) {
    waiting_->boxes.push_back({std::string(kSafeOffTitle), notOff, "", waiting_->end->seconds, std::nullopt});
  }
  Keep(*std::exchange(waiting_, std::nullopt));
}

/// The names of readings are other programs' too; a tag is the station's own to give. A run that did not wait has
/// none.
void StationRecords::AddWait(std::map<std::string, std::string>& tags) const {
  const auto ms = std::chrono::round<std::chrono::milliseconds>(waited()).count();
  constexpr double kMsInSecond = 1000;
  if (ms > 0) tags.emplace("shared_wait_seconds", NumberText(static_cast<double>(ms) / kMsInSecond));
}

RunIdentity StationRecords::IdentityOf(RunKind kind) {
  const auto chance = [this] { return (std::uint64_t{chance_()} << 32U) | chance_(); };
  RunIdentity run;
  run.beganMs = WallClockMs();
  run.id = RunIdOf(run.beganMs, chance(), chance());
  run.station = options_.station;
  run.bench = options_.bench ? "virtual" : "real";
  run.benchSetup = options_.Given("bench").value_or("");
  run.program = "orvane " ORVANE_VERSION;
  run.kind = RunKindText(kind);
  const UnitTexts& texts = unit_.Texts();
  run.serial = texts.serial;
  run.part = texts.part;
  run.operatorName = texts.operatorName;
  run.tags = texts.tags;
  if (onBegin) onBegin(run);
  return run;
}

KeeperWays StationRecords::Ways() const {
  const std::string place = "sqlite:" + options_.records->string();
  const std::string spool = SpoolFolderOf(place, "");
  return {[place] { return OpenStore(place); },
          [spool](const RunRecord& record) {
            DiskFiles files = Disk();
            AsStoreFault([&] { KeepInSpool(files, spool, record); });
          },
          [spool](const std::string& run, const std::string& bytes) { GrowTrace(spool, run, bytes); },
          [spool](const std::string& run) { ForgetTrace(spool, run); },
          [spool](RecordStore& store) {
            DiskFiles files = Disk();
            DrainedSpool drained;
            AsStoreFault([&] { drained = DrainSpool(store, files, spool); });
            // One that the store has refused has come to its end all the same.
            const auto mayEndByItself = [&](const RecordStore::OpenRun& run) {
              return WriterMayLive(run.writer) || LiesInSpool(spool, run.id);
            };
            std::vector<std::string> ended;
            (void)EndAbandoned(store, mayEndByItself, WallClockMs(), [&](RunRecord& left) {
              TakeTrace(spool, left);
              TakeNotOff(spool, left);
              ended.push_back(left.identity.id);
            });
            for (const std::string& run : ended) ForgetTrace(spool, run);
            return drained.faults;
          }};
}

void StationRecords::Ear::Call() { QCoreApplication::postEvent(this, new QEvent(QEvent::User)); }

bool StationRecords::Ear::event(QEvent* event) {
  if (event->type() != QEvent::User) return QObject::event(event);
  onCall_();
  return true;
}

void StationRecords::Hear(const Kept& kept) {
  {
    const std::lock_guard held(mutex_);
    heard_.push_back(kept);
  }
  ear_.Call();
}

void StationRecords::TellWhatWasHeard() {
  std::vector<Kept> heard;
  {
    const std::lock_guard held(mutex_);
    heard.swap(heard_);
  }
  for (const Kept& kept : heard) {
    if (onKept) onKept(kept);
  }
}

void StationRecords::Finish() {
  recorder_.Flush();
  keeper_.Drain();
  TellWhatWasHeard();
}

}  // namespace orvane
