#include "app/keeping/record_keeper.h"

#include <chrono>
#include <exception>
#include <utility>

namespace orvane {
namespace {

using namespace std::chrono_literals;

/// Ahead of a run's first byte nobody is kept waiting for longer.
constexpr auto kLongestBegin = 100ms;

}  // namespace

// Whatever fails on this thread is told: uncaught it would end the station, in the middle of a run.

RecordKeeper::RecordKeeper(KeeperWays ways, WriterMark writer, std::function<void(const Kept&)> told)
    : ways_(std::move(ways)), writer_(std::move(writer)), told_(std::move(told)), thread_([this] { Work(); }) {
  // What an earlier station has left is seen to while nobody waits.
  Give([this] {
    try {
      (void)Store();
    } catch (const std::exception& fault) {
      told_({"", true, fault.what()});
    }
  });
}

RecordKeeper::~RecordKeeper() {
  {
    const std::lock_guard held(mutex_);
    ends_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void RecordKeeper::Work() {
  std::unique_lock held(mutex_);
  while (true) {
    changed_.wait(held, [this] { return ends_ || !jobs_.empty(); });
    if (jobs_.empty()) break;
    const auto job = std::move(jobs_.front());
    jobs_.pop_front();
    busy_ = true;
    held.unlock();
    job();
    held.lock();
    busy_ = false;
    changed_.notify_all();
  }
  // A connection belongs to the thread that made it.
  store_.reset();
}

void RecordKeeper::Give(std::function<void()> job) {
  {
    const std::lock_guard held(mutex_);
    jobs_.push_back(std::move(job));
  }
  changed_.notify_all();
}

void RecordKeeper::Drain() {
  std::unique_lock held(mutex_);
  changed_.wait(held, [this] { return jobs_.empty() && !busy_; });
}

void RecordKeeper::Begin(const RunIdentity& run) {
  Give([this, run] { BeginNow(run); });
  std::unique_lock held(mutex_);
  changed_.wait_for(held, kLongestBegin, [this] { return jobs_.empty() && !busy_; });
}

void RecordKeeper::Grow(const std::string& run, std::string bytes) {
  Give([this, run, piece = std::move(bytes)] { ways_.grow(run, piece); });
}

void RecordKeeper::Finish(RunRecord record) {
  Give([this, kept = std::make_shared<RunRecord>(std::move(record))] { FinishNow(*kept); });
}

RecordStore& RecordKeeper::Store() {
  if (store_) return *store_;
  store_ = ways_.openStore();
  for (const std::string& fault : ways_.takeIn(*store_)) told_({"", true, fault});
  return *store_;
}

/// A run that could not be begun is entered as a whole at its end.
void RecordKeeper::BeginNow(const RunIdentity& run) {
  try {
    Store().Begin(run, writer_);
  } catch (const std::exception& fault) {
    store_.reset();
    told_({"", true, fault.what()});
  }
}

void RecordKeeper::FinishNow(const RunRecord& record) {
  try {
    if (!Store().Finish(record)) throw StoreFault("The store has another end of this run already.");
    ways_.settle(record.identity.id);
    told_({record.identity.id, true, ""});
  } catch (const std::exception& fault) {
    store_.reset();
    told_(Spooled(record, fault.what()));
  }
}

Kept RecordKeeper::Spooled(const RunRecord& record, const std::string& fault) {
  try {
    ways_.spool(record);
    ways_.settle(record.identity.id);
    return {record.identity.id, true, fault};
  } catch (const std::exception& beside) {
    return {record.identity.id, false, fault + " " + beside.what()};
  }
}

}  // namespace orvane
