#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "records/record.h"

namespace orvane {

/// A store that cannot be read or written, in words.
class StoreFault : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A run without what was measured in it.
struct RunSummary {
  RunIdentity identity;
  std::optional<RunEnd> end{};
};

/// Which runs are meant. What has no value means all.
struct RunQuery {
  std::optional<std::string> serial{};
  std::optional<std::string> station{};
  std::optional<std::string> verdict{};
  /// since <= began < until, in milliseconds.
  std::optional<std::int64_t> since{};
  std::optional<std::int64_t> until{};
  std::optional<std::size_t> limit{};
};

/// What is to be taken out of a store.
struct PruneOrder {
  std::int64_t beforeMs = 0;
  /// Spares runs that were no complete PASS.
  bool keepFailed = false;
  /// Traces alone, in place of whole records.
  bool keepRecords = false;
};

struct PruneResult {
  std::size_t records = 0;
  std::size_t traces = 0;
};

/// Who writes a run, to be known again when it is no more.
struct WriterMark {
  /// The host's name, its start (a boot's id), the process and when that started.
  std::string host;
  std::string boot;
  std::int64_t process = 0;
  std::int64_t started = 0;
  friend bool operator==(const WriterMark&, const WriterMark&) = default;
};

/// Where records are kept. Every member may throw StoreFault; whoever waits for another program waits for a bounded
/// time. What it says of a run is never changed behind the run's end, but by Prune.
class RecordStore {
 public:
  RecordStore() = default;
  RecordStore(const RecordStore&) = delete;
  RecordStore& operator=(const RecordStore&) = delete;
  virtual ~RecordStore() = default;

  /// The run is there, without an end.
  virtual void Begin(const RunIdentity& run, const WriterMark& writer) = 0;
  /// Its end and all that belongs to it, in one transaction. Also for a run that was never begun here.
  /// A run that has its end already is left alone. @return false then.
  virtual bool Finish(const RunRecord& record) = 0;

  /// Newest first.
  [[nodiscard]] virtual std::vector<RunSummary> List(const RunQuery& query) = 0;
  /// Ids that begin so, at most `most` of them, in order.
  [[nodiscard]] virtual std::vector<std::string> IdsLike(std::string_view beginning, std::size_t most) = 0;
  [[nodiscard]] virtual std::optional<RunRecord> Load(std::string_view id) = 0;

  /// Runs without an end and who writes them.
  struct OpenRun {
    std::string id;
    WriterMark writer;
  };
  [[nodiscard]] virtual std::vector<OpenRun> OpenRuns() = 0;

  virtual PruneResult Prune(const PruneOrder& order) = 0;

  /// One line for each thing that is wrong in a run's rows and documents: a digest that does not fit, a row without
  /// its run, a document that is not there.
  [[nodiscard]] virtual std::vector<std::string> Check(std::string_view id) = 0;
  /// The same for what belongs to no run that is there: rows without their run, damage of the store itself.
  [[nodiscard]] virtual std::vector<std::string> CheckStore() = 0;
};

}  // namespace orvane
