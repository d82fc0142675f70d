/// What it takes to keep a record, what it takes on the disk, and to list a hundred thousand.

#include <QCoreApplication>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "adapters/sql/open_store.h"
#include "adapters/sql/sqlite_place.h"
#include "figures.h"
#include "records/postgresql_server.h"
#include "records/sample_record.h"
#include "support/scratch_folder.h"

namespace {

using namespace orvane;
using namespace orvane::test;

constexpr int kRecords = 200;
constexpr int kListed = 100'000;

void KeepRecords(RecordStore& store, const char* engine, Table& table) {
  std::vector<double> begin;
  std::vector<double> finish;
  std::vector<double> processor;
  for (int number = 0; number < kRecords; ++number) {
    const RunRecord record = TypicalRecord(number);
    begin.push_back(Milliseconds([&] { store.Begin(record.identity, {}); }));
    processor.push_back(
        ProcessorMilliseconds([&] { finish.push_back(Milliseconds([&] { store.Finish(record); })); }));
  }
  std::printf("%s, %d records of 110 readings, 420 passes, 12 documents\n", engine, kRecords);
  table.Add("  begin, median", Median(begin), "ms", 20);
  table.Add("  finish, median", Median(finish), "ms", 20);
  table.Add("  finish, the slowest of a hundred", Quantile(finish, 0.99), "ms", 100);
  table.Add("  finish, processor, median", Median(processor), "ms", 10);
  table.Add("  load, median", Milliseconds([&] { static_cast<void>(store.Load(IdOf(kRecords / 2))); }), "ms", 20);
}

void ListRecords(const std::string& path, Table& table) {
  {
    SqlConnection connection(SqliteEngine(), SqlitePlace(path, false, 5000), 5000,
                             [](SqlConnection& opened) { TakeUp(opened, SqliteSteps()); });
    connection.Run(
        "WITH RECURSIVE number (n) AS (SELECT 0 UNION ALL SELECT n + 1 FROM number WHERE n < " +
        std::to_string(kListed - 1) +
        ") INSERT INTO run SELECT printf('%08x-0000-7000-8000-000000000000', n), 'line-' || n % 5, 'real', NULL, "
        "'orvane 0.1.0', 'whole', 'SN-' || n, 'P-100', 'Kim', "
        "strftime('%Y-%m-%dT%H:%M:%S.000Z', 1700000000 + n * 60, 'unixepoch'), "
        "strftime('%Y-%m-%dT%H:%M:%S.000Z', 1700000030 + n * 60, 'unixepoch'), 30, 'PASS', 1, 'verdict', NULL, 373, "
        "19769, 3906 FROM number");
    connection.Run("INSERT INTO tag SELECT id, 'line', 'A' FROM run");
  }
  const auto opened = [&](const RunQuery& query) {
    return [&path, query] { static_cast<void>(OpenStore("sqlite:" + path, {.readOnly = true})->List(query)); };
  };
  std::printf("SQLite, %d runs, opened and listed\n", kListed);
  table.Add("  the newest 50", Milliseconds(opened({.limit = 50})), "ms", 100);
  table.Add("  the newest 1000", Milliseconds(opened({.limit = 1000})), "ms", 100);
  table.Add("  those of a serial number", Milliseconds(opened({.serial = "SN-777"})), "ms", 100);
  table.Add("  the newest 50 of a station", Milliseconds(opened({.station = "line-3", .limit = 50})), "ms", 100);
  table.Add("  the newest 50 that failed, of which there is none",
            Milliseconds(opened({.verdict = "FAIL", .limit = 50})), "ms", 100);
  std::printf("  all of them                                      %9.3f ms\n", Milliseconds(opened({})));
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const ScratchFolder folder;
  Table table;
  KeepRecords(*OpenStore("sqlite:" + folder.Path("records.sqlite")), "SQLite", table);
  const double bytes = static_cast<double>(std::filesystem::file_size(folder.Path("records.sqlite")));
  table.Add("  on the disk, a record", bytes / kRecords / 1024, "KiB", 64);
  if (!PostgresqlServer::Programs().empty()) {
    PostgresqlServer server;
    const std::string database = server.NewDatabase();
    const auto size = [&] { return std::stod(server.Ask(database, "SELECT pg_database_size(current_database())")); };
    const auto store = OpenStore("postgresql:" + database);
    const double empty = size();
    KeepRecords(*store, "PostgreSQL", table);
    std::printf("  on the disk, a record                            %9.3f KiB\n", (size() - empty) / kRecords / 1024);
  }
  ListRecords(folder.Path("many.sqlite"), table);
  return table.Status();
}
