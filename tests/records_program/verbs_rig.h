#pragma once

#include <gtest/gtest.h>

#include <sstream>

#include "app/records/named_runs.h"
#include "app/records/orders.h"
#include "app/records/verbs.h"
#include "records_program/sample_records.h"
#include "support/memory_files.h"
#include "support/memory_store.h"

namespace orvane::test {

/// A store for as long as the one behind it is there: what a verb opens, it may close.
class BorrowedStore final : public RecordStore {
 public:
  explicit BorrowedStore(MemoryStore& store) : store_(store) {}
  void Begin(const RunIdentity& run, const WriterMark& writer) override { store_.Begin(run, writer); }
  bool Finish(const RunRecord& record) override { return store_.Finish(record); }
  std::vector<RunSummary> List(const RunQuery& query) override { return store_.List(query); }
  std::vector<std::string> IdsLike(std::string_view beginning, std::size_t most) override {
    return store_.IdsLike(beginning, most);
  }
  std::optional<RunRecord> Load(std::string_view id) override { return store_.Load(id); }
  std::vector<OpenRun> OpenRuns() override { return store_.OpenRuns(); }
  PruneResult Prune(const PruneOrder& order) override { return store_.Prune(order); }
  std::vector<std::string> Check(std::string_view id) override { return store_.Check(id); }
  std::vector<std::string> CheckStore() override { return store_.CheckStore(); }

 private:
  MemoryStore& store_;
};

/// The verbs over stores in memory, "sqlite:here" and "sqlite:there". An archive is the ids of its records, a line
/// each.
class VerbsRig : public testing::Test {
 protected:
  /// What `orvane-records --store sqlite:here` with these words ends with.
  int Run(const std::vector<std::string>& words) {
    std::vector<const char*> argv{"orvane-records", "--store", "sqlite:here"};
    for (const std::string& word : words) argv.push_back(word.c_str());
    const auto parsed = ParseRecordsOrder(static_cast<int>(argv.size()), argv.data(), "");
    out.str("");
    errors.str("");
    shown.clear();
    if (const auto* none = std::get_if<NoOrder>(&parsed)) {
      errors << none->text;
      return none->status;
    }
    return CarryOut(std::get<RecordsOrder>(parsed), doors);
  }

  [[nodiscard]] std::unique_ptr<RecordStore> Open(const std::string& name, StoreAccess access) {
    opened.emplace_back(name, access);
    if (name == "sqlite:gone") throw StoreFault("/gone: there is no store.");
    return std::make_unique<BorrowedStore>(name == "sqlite:there" ? there : here);
  }

  [[nodiscard]] std::vector<RunRecord> RecordsOf(const std::string& archive) {
    if (archive.starts_with("damaged")) throw AnswerIsNo("it is cut short.");
    RunRecord record = LaterPass();
    record.identity.id = archive;
    return {record};
  }

  MemoryStore here;
  MemoryStore there;
  MemoryFiles files;
  std::vector<std::pair<std::string, StoreAccess>> opened;
  std::string shown;
  std::ostringstream out;
  std::ostringstream errors;
  RecordsDoors doors{[this](const std::string& name, StoreAccess access) { return Open(name, access); },
                     files,
                     [](const std::vector<RunRecord>& records) { return records.front().identity.id; },
                     [this](const std::string& archive) { return RecordsOf(archive); },
                     {},
                     {},
                     [](std::chrono::milliseconds) { return false; },
                     [this](const std::string& text) { shown += text; },
                     {},
                     out,
                     errors};
};

}  // namespace orvane::test
