#include "adapters/sql/sql_schema.h"

#include <charconv>
#include <chrono>
#include <string>
#include <thread>

namespace orvane {
namespace {

bool IsSqlite(const SqlConnection& connection) { return &connection.Engine() == &SqliteEngine(); }

std::size_t NumberIn(const std::optional<std::string>& text) {
  std::size_t number = 0;
  if (text) std::from_chars(text->data(), text->data() + text->size(), number);
  return number;
}

/// 0 for what is no store yet. @throws StoreFault for what is something else.
std::size_t VersionOf(SqlConnection& connection) {
  if (!IsSqlite(connection)) {
    if (NumberIn(connection.Ask("SELECT count(*) FROM pg_class WHERE oid = to_regclass('schema_version')")) == 0)
      return 0;
    return NumberIn(connection.Ask("SELECT max(version) FROM schema_version"));
  }
  const std::size_t version = NumberIn(connection.Ask("PRAGMA user_version"));
  if (version == 0 && NumberIn(connection.Ask("SELECT count(*) FROM sqlite_master")) != 0) {
    connection.Fail("is a database of something else");
  }
  return version;
}

void RequireNotNewer(const SqlConnection& connection, std::size_t version, std::size_t known) {
  if (version <= known) return;
  connection.Fail("has version " + std::to_string(version) + ", and this program knows versions up to " +
                  std::to_string(known) + " only");
}

void SetVersion(SqlConnection& connection, std::size_t version) {
  const std::string number = std::to_string(version);
  if (IsSqlite(connection)) return connection.Run("PRAGMA user_version = " + number);
  connection.Run("DELETE FROM schema_version");
  connection.Run("INSERT INTO schema_version (version) VALUES (" + number + ")");
}

// A file that is no store yet gets both while it is empty, and keeps them. Programs that do so at the same time are
// refused at once, however patient they are: SQLite waits for no lock here.
void SetJournal(SqlConnection& connection) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::milliseconds kPause{5};
  const auto until = Clock::now() + std::chrono::milliseconds(connection.PatienceMs());
  while (true) {
    try {
      if (NumberIn(connection.Ask("PRAGMA user_version")) == 0) connection.Run("PRAGMA auto_vacuum = INCREMENTAL");
      if (connection.Ask("PRAGMA journal_mode") != "wal") connection.Run("PRAGMA journal_mode = WAL");
      return;
    } catch (const StoreFault&) {
      if (!connection.IsHeld() || Clock::now() >= until) throw;
      std::this_thread::sleep_for(kPause);
    }
  }
}

}  // namespace

void TakeUp(SqlConnection& connection, std::span<const SchemaStep> steps) {
  std::size_t version = VersionOf(connection);
  RequireNotNewer(connection, version, steps.size());
  if (IsSqlite(connection)) SetJournal(connection);
  if (version == steps.size()) return;
  SqlTransaction transaction(connection);
  // Any number, as long as no other program of the server takes the same one for something else.
  if (!IsSqlite(connection)) connection.Run("SELECT pg_advisory_xact_lock(5718020211)");
  // Somebody else may have done it meanwhile.
  version = VersionOf(connection);
  RequireNotNewer(connection, version, steps.size());
  for (const SchemaStep& step : steps.subspan(version)) {
    for (const std::string_view statement : step.statements) connection.Run(statement);
  }
  SetVersion(connection, steps.size());
  transaction.Commit();
}

void RequireVersion(SqlConnection& connection, std::span<const SchemaStep> steps) {
  const std::size_t version = VersionOf(connection);
  RequireNotNewer(connection, version, steps.size());
  if (version == 0) connection.Fail("holds no records");
  if (version < steps.size()) {
    connection.Fail("has version " + std::to_string(version) + ", and what only reads needs version " +
                    std::to_string(steps.size()));
  }
}

}  // namespace orvane
