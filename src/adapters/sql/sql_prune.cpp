#include "adapters/sql/sql_prune.h"

#include <set>
#include <string>
#include <vector>

#include "adapters/sql/sql_documents.h"

namespace orvane {
namespace {

/// In one transaction: some milliseconds.
constexpr int kRunsAtOnce = 50;

class Pruning {
 public:
  Pruning(SqlConnection& connection, const PruneOrder& order) : connection_(connection), order_(order) {}

  /// @return whether there may be more.
  bool TakeSome(PruneResult& result) {
    SqlTransaction transaction(connection_);
    const std::vector<std::string> runs = SomeRuns();
    std::set<std::string> contents;
    PruneResult taken;
    for (const std::string& run : runs)
      order_.keepRecords ? TakeTrace(run, contents, taken) : TakeRun(run, contents, taken);
    for (const std::string& sha256 : contents) TakeContentOfNobody(sha256);
    transaction.Commit();
    result.records += taken.records;
    result.traces += taken.traces;
    return !runs.empty();
  }

 private:
  std::vector<std::string> SomeRuns() {
    std::string words = "SELECT id FROM run WHERE began < ? AND ending IS NOT NULL";
    if (order_.keepFailed) words += " AND verdict = 'PASS' AND complete = 1";
    if (order_.keepRecords) {
      words += " AND EXISTS (SELECT 1 FROM run_document d WHERE d.run = run.id AND d.role = 'trace')";
    }
    std::vector<std::string> runs;
    SqlStatement rows = connection_.Prepared(words + " ORDER BY began LIMIT ?");
    rows.Bind(QtText(UtcText(order_.beforeMs))).Bind(kRunsAtOnce).Execute();
    while (rows.Next()) runs.push_back(rows.Text(0));
    return runs;
  }

  void TakeTrace(const std::string& run, std::set<std::string>& contents, PruneResult& taken) {
    for (const DocumentLink& link : LinksOf(connection_, run)) {
      if (link.role == "trace") contents.insert(link.sha256);
    }
    Delete("DELETE FROM run_document WHERE role = 'trace' AND run = ?", run);
    ++taken.traces;
  }

  void TakeRun(const std::string& run, std::set<std::string>& contents, PruneResult& taken) {
    for (const DocumentLink& link : LinksOf(connection_, run)) {
      contents.insert(link.sha256);
      if (link.role == "trace") ++taken.traces;
    }
    if (!connection_.Engine().numbersNames) {
      Delete("DELETE FROM reading WHERE run = ?", run);
      Delete("DELETE FROM pass WHERE run = ?", run);
    }
    // All else leans on it and goes with it.
    Delete("DELETE FROM run WHERE id = ?", run);
    ++taken.records;
  }

  void TakeContentOfNobody(const std::string& sha256) {
    connection_
        .Prepared(
            "DELETE FROM document WHERE sha256 = ? AND NOT EXISTS "
            "(SELECT 1 FROM run_document d WHERE d.sha256 = document.sha256)")
        .Bind(QtText(sha256))
        .Execute();
  }

  void Delete(const std::string& words, const std::string& run) {
    connection_.Prepared(words).Bind(QtText(run)).Execute();
  }

  SqlConnection& connection_;
  const PruneOrder& order_;
};

}  // namespace

PruneResult PruneStore(SqlConnection& connection, const PruneOrder& order) {
  PruneResult result;
  Pruning pruning(connection, order);
  while (pruning.TakeSome(result)) {
  }
  if (&connection.Engine() == &SqliteEngine()) {
    // What was freed goes back to the disk, a page at each row.
    SqlStatement pages = connection.Prepared("PRAGMA incremental_vacuum");
    pages.Execute();
    while (pages.Next()) {
    }
  }
  return result;
}

}  // namespace orvane
