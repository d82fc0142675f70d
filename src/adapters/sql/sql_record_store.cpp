#include "adapters/sql/sql_record_store.h"

#include <QByteArray>
#include <utility>

#include "adapters/sql/sql_list.h"
#include "adapters/sql/sql_prune.h"
#include "adapters/sql/sql_store_check.h"
#include "records/record_bytes.h"

namespace orvane {
namespace {

std::function<void(SqlConnection&)> WhenOpened(const SqlEngine& engine, bool readOnly) {
  const auto steps = &engine == &SqliteEngine() ? SqliteSteps() : PostgresqlSteps();
  if (readOnly) return [steps](SqlConnection& connection) { RequireVersion(connection, steps); };
  return [steps](SqlConnection& connection) { TakeUp(connection, steps); };
}

}  // namespace

SqlRecordStore::SqlRecordStore(const SqlEngine& engine, SqlPlace place, const StoreUse& use)
    : connection_(engine, std::move(place), use.patienceMs, WhenOpened(engine, use.readOnly)), writer_(connection_) {}

void SqlRecordStore::MakeReady() {
  if (connection_.MakeReady()) writer_.Forget();
}

void SqlRecordStore::Begin(const RunIdentity& run, const WriterMark& writer) {
  MakeReady();
  const RunIdentity row = RowsOf({run}).identity;
  SqlTransaction transaction(connection_);
  if (!writer_.Begin(row)) return;
  connection_.Prepared("INSERT INTO run_writer (run, host, boot, process, started) VALUES (?, ?, ?, ?, ?)")
      .Bind(QtText(row.id))
      .Bind(QtText(StorableText(writer.host)))
      .Bind(QtText(StorableText(writer.boot)))
      .Bind(static_cast<qint64>(writer.process))
      .Bind(static_cast<qint64>(writer.started))
      .Execute();
  transaction.Commit();
}

bool SqlRecordStore::Finish(const RunRecord& record) {
  MakeReady();
  if (!record.end) throw RecordRefused("The run " + record.identity.id + " has no end yet.");
  const RunRecord rows = RowsOf(record);
  try {
    DocumentsToKeep documents(connection_, record.documents);
    SqlTransaction transaction(connection_);
    if (!writer_.End(rows.identity, *rows.end)) return false;
    WriteAll(rows, documents);
    transaction.Commit();
    return true;
  } catch (const DamagedRecord& refused) {
    throw RecordRefused("The store " + connection_.Name() + " does not take such a record: " + refused.what());
  } catch (...) {
    // Names that were new are not there.
    writer_.Forget();
    throw;
  }
}

void SqlRecordStore::WriteAll(const RunRecord& rows, DocumentsToKeep& documents) {
  const std::string& run = rows.identity.id;
  connection_.Prepared("DELETE FROM run_writer WHERE run = ?").Bind(QtText(run)).Execute();
  writer_.WriteParts(rows);
  documents.Write(run);
  const std::string seal = SealOf(rows, documents.Links());
  connection_.Prepared("INSERT INTO run_seal (run, digests) VALUES (?, ?)")
      .Bind(QtText(run))
      .Bind(QByteArray(seal.data(), static_cast<qsizetype>(seal.size())))
      .Execute();
}

std::vector<RunSummary> SqlRecordStore::List(const RunQuery& query) {
  MakeReady();
  return ListRuns(connection_, query);
}

std::vector<std::string> SqlRecordStore::IdsLike(std::string_view beginning, std::size_t most) {
  MakeReady();
  return ListIds(connection_, beginning, most);
}

std::optional<RunRecord> SqlRecordStore::Load(std::string_view id) {
  MakeReady();
  const SqlTransaction moment(connection_, SqlTransaction::Kind::Reads);
  auto record = ReadRows(connection_, id);
  if (!record) return std::nullopt;
  try {
    for (const DocumentLink& link : LinksOf(connection_, id)) {
      record->documents.push_back(DocumentBehind(connection_, link));
    }
  } catch (const DamagedRecord& damage) {
    throw StoreFault("The run " + std::string(id) + " in the store " + connection_.Name() + ": " + damage.what());
  }
  return record;
}

std::vector<RecordStore::OpenRun> SqlRecordStore::OpenRuns() {
  MakeReady();
  std::vector<OpenRun> runs;
  SqlStatement rows = connection_.Prepared(
      "SELECT w.run, w.host, w.boot, w.process, w.started FROM run_writer w JOIN run r ON r.id = w.run "
      "WHERE r.ending IS NULL ORDER BY w.run");
  rows.Execute();
  while (rows.Next()) runs.push_back({rows.Text(0), {rows.Text(1), rows.Text(2), rows.Whole(3), rows.Whole(4)}});
  return runs;
}

PruneResult SqlRecordStore::Prune(const PruneOrder& order) {
  MakeReady();
  return PruneStore(connection_, order);
}

std::vector<std::string> SqlRecordStore::Check(std::string_view id) {
  MakeReady();
  return CheckRun(connection_, id);
}

std::vector<std::string> SqlRecordStore::CheckStore() {
  MakeReady();
  return CheckAllOf(connection_);
}

}  // namespace orvane
