#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "records/record_store.h"

namespace orvane::test {

/// A store of nothing but memory, by the letter of its interface.
class MemoryStore : public RecordStore {
 public:
  /// What `Check` says of a run, and of no id what `CheckStore` says.
  std::map<std::string, std::vector<std::string>> faults;
  /// The next thing that is asked of it fails so, once.
  std::optional<std::string> failsNext;
  /// A run whose record cannot be loaded.
  std::string damaged;
  /// A run whose record it does not take.
  std::string refuses;

  void Begin(const RunIdentity& run, const WriterMark& writer) override {
    FailIfAsked();
    records_[run.id].identity = run;
    writers_[run.id] = writer;
  }

  bool Finish(const RunRecord& record) override {
    FailIfAsked();
    if (record.identity.id == refuses) throw StoreFault("it has no place for it.");
    const auto there = records_.find(record.identity.id);
    if (there != records_.end() && there->second.end) return false;
    writers_.erase(record.identity.id);
    records_[record.identity.id] = record;
    return true;
  }

  std::vector<RunSummary> List(const RunQuery& query) override {
    FailIfAsked();
    std::vector<RunSummary> runs;
    for (const auto& [id, record] : records_) {
      if (Fits(record, query)) runs.push_back({record.identity, record.end});
    }
    std::stable_sort(runs.begin(), runs.end(), [](const RunSummary& a, const RunSummary& b) {
      return std::pair(a.identity.beganMs, a.identity.id) > std::pair(b.identity.beganMs, b.identity.id);
    });
    if (query.limit && runs.size() > *query.limit) runs.resize(*query.limit);
    return runs;
  }

  std::vector<std::string> IdsLike(std::string_view beginning, std::size_t most) override {
    FailIfAsked();
    std::vector<std::string> ids;
    for (const auto& [id, record] : records_) {
      if (id.starts_with(beginning) && ids.size() < most) ids.push_back(id);
    }
    return ids;
  }

  std::optional<RunRecord> Load(std::string_view id) override {
    FailIfAsked();
    if (!damaged.empty() && id == damaged) throw StoreFault("Its document is damaged.");
    const auto record = records_.find(std::string(id));
    return record == records_.end() ? std::nullopt : std::optional(record->second);
  }

  std::vector<OpenRun> OpenRuns() override {
    std::vector<OpenRun> runs;
    for (const auto& [id, writer] : writers_) runs.push_back({id, writer});
    return runs;
  }

  PruneResult Prune(const PruneOrder& order) override {
    FailIfAsked();
    PruneResult result;
    for (auto each = records_.begin(); each != records_.end();) {
      RunRecord& record = each->second;
      const bool isGood = record.end && record.end->verdict == "PASS" && record.end->complete;
      const bool goes = record.end && record.identity.beganMs < order.beforeMs && (isGood || !order.keepFailed);
      if (goes && !order.keepRecords) {
        ++result.records;
        each = records_.erase(each);
        continue;
      }
      if (goes) result.traces += std::erase_if(record.documents, [](const auto& d) { return d.role == "trace"; });
      ++each;
    }
    return result;
  }

  std::vector<std::string> Check(std::string_view id) override {
    FailIfAsked();
    return faults[std::string(id)];
  }

  std::vector<std::string> CheckStore() override {
    FailIfAsked();
    return faults[""];
  }

 private:
  void FailIfAsked() {
    if (!failsNext) return;
    const std::string text = *failsNext;
    failsNext.reset();
    throw StoreFault(text);
  }

  static bool Fits(const RunRecord& record, const RunQuery& query) {
    const RunIdentity& run = record.identity;
    return (!query.serial || run.serial == *query.serial) && (!query.station || run.station == *query.station) &&
           (!query.verdict || (record.end && record.end->verdict == *query.verdict)) &&
           (!query.since || run.beganMs >= *query.since) && (!query.until || run.beganMs < *query.until);
  }

  std::map<std::string, RunRecord> records_;
  std::map<std::string, WriterMark> writers_;
};

}  // namespace orvane::test
