#pragma once

#include "adapters/sql/sql_connection.h"
#include "adapters/sql/sql_run_rows.h"
#include "adapters/sql/sql_schema.h"
#include "records/record_store.h"

namespace orvane {

/// How a program uses a store.
struct StoreUse {
  /// A store that is only read has to be there, and be of this program's version.
  bool readOnly = false;
  /// How long another program that holds the store is waited for, at each thing that is asked of it.
  int patienceMs = 5000;
};

/// Records in a database of SQLite or PostgreSQL. A store belongs to the thread that made it; any number of them, in
/// any number of threads and programs, may be of one database.
class SqlRecordStore final : public RecordStore {
 public:
  /// @throws StoreFault.
  SqlRecordStore(const SqlEngine& engine, SqlPlace place, const StoreUse& use);

  void Begin(const RunIdentity& run, const WriterMark& writer) override;
  bool Finish(const RunRecord& record) override;
  [[nodiscard]] std::vector<RunSummary> List(const RunQuery& query) override;
  [[nodiscard]] std::vector<std::string> IdsLike(std::string_view beginning, std::size_t most) override;
  [[nodiscard]] std::optional<RunRecord> Load(std::string_view id) override;
  [[nodiscard]] std::vector<OpenRun> OpenRuns() override;
  PruneResult Prune(const PruneOrder& order) override;
  [[nodiscard]] std::vector<std::string> Check(std::string_view id) override;
  [[nodiscard]] std::vector<std::string> CheckStore() override;

 private:
  void MakeReady();
  void WriteAll(const RunRecord& rows, DocumentsToKeep& documents);

  SqlConnection connection_;
  RunRowsWriter writer_;
};

}  // namespace orvane
