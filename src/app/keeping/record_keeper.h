#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "records/record_store.h"

namespace orvane {

/// The ways of a keeper to the disk. All of them are taken on its own thread; each may throw, StoreFault as a rule.
struct KeeperWays {
  std::function<std::unique_ptr<RecordStore>()> openStore;
  /// Puts a record that the store does not take beside it.
  std::function<void(const RunRecord& record)> spool;
  /// Keeps a piece of the trace of a run that goes on, and forgets all of them when it is over.
  std::function<void(const std::string& run, const std::string& bytes)> grow;
  std::function<void(const std::string& run)> settle;
  /// Takes in what was put beside the store earlier, and ends the runs of stations that are no more.
  /// @return what stays beside it, and why, a sentence each.
  std::function<std::vector<std::string>(RecordStore& store)> takeIn;
};

/// What became of a record. On the keeper's thread.
struct Kept {
  std::string run;
  /// It is in the store, or beside it.
  bool isKept = true;
  /// What went wrong, in words; empty when nothing did.
  std::string fault;
};

/// Keeps the records of a station on a thread of its own: a store that is slow, locked or gone holds nobody up.
class RecordKeeper {
 public:
  RecordKeeper(KeeperWays ways, WriterMark writer, std::function<void(const Kept&)> told);
  RecordKeeper(const RecordKeeper&) = delete;
  RecordKeeper& operator=(const RecordKeeper&) = delete;
  /// Behind everything that was given to it.
  ~RecordKeeper();

  /// The run is in the store when this returns, unless the store takes longer than a person would notice.
  void Begin(const RunIdentity& run);
  void Grow(const std::string& run, std::string bytes);
  void Finish(RunRecord record);
  /// Waits until all that was given to it has been told.
  void Drain();

 private:
  void Work();
  void Give(std::function<void()> job);
  [[nodiscard]] RecordStore& Store();
  void BeginNow(const RunIdentity& run);
  void FinishNow(const RunRecord& record);
  /// The store's fault, and whether the record could be put beside it.
  [[nodiscard]] Kept Spooled(const RunRecord& record, const std::string& fault);

  KeeperWays ways_;
  WriterMark writer_;
  std::function<void(const Kept&)> told_;
  std::unique_ptr<RecordStore> store_;

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::function<void()>> jobs_;
  bool busy_ = false;
  bool ends_ = false;
  /// Last: it works with all of the above.
  std::thread thread_;
};

}  // namespace orvane
