#include "adapters/sql/open_store.h"

#include <filesystem>
#include <optional>

#include "adapters/sql/conninfo.h"
#include "adapters/sql/sqlite_place.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSqlite = "sqlite:";
constexpr std::string_view kPostgresql = "postgresql:";

/// Says where the server is to a connection; what it has no member for goes along as it is.
SqlPlace PostgresqlPlace(const Conninfo& conninfo) {
  const auto address = [conninfo](QSqlDatabase& database) {
    std::string others;
    for (const auto& [key, value] : conninfo) {
      if (key == "host") {
        database.setHostName(QtText(value));
      } else if (key == "dbname") {
        database.setDatabaseName(QtText(value));
      } else if (key == "user") {
        database.setUserName(QtText(value));
      } else if (key == "password") {
        database.setPassword(QtText(value));
      } else if (key == "port") {
        database.setPort(QtText(value).toInt());
      } else {
        others += (others.empty() ? "" : ";") + key + "=" + QuotedValue(value);
      }
    }
    database.setConnectOptions(QtText(others));
  };
  return {NameOf(conninfo), address, [] {}, [] { return false; }};
}

}  // namespace

std::string FaultOfStoreText(std::string_view text) {
  if (text.starts_with(kSqlite)) {
    if (text.size() == kSqlite.size()) return "sqlite: needs the path of a file behind it.";
    return text.find('\0') == std::string_view::npos ? "" : "A path cannot have the character of number 0 in it.";
  }
  if (text.starts_with(kPostgresql)) {
    return ConninfoOf(text.substr(kPostgresql.size()))
               ? ""
               : "postgresql: needs words like host=... dbname=... behind it, or //user@host/dbname.";
  }
  return "A store is sqlite:PATH or postgresql:CONNINFO, not \"" + std::string(text) + "\".";
}

std::unique_ptr<RecordStore> OpenStore(std::string_view text, const StoreUse& use) {
  if (const std::string fault = FaultOfStoreText(text); !fault.empty()) throw StoreFault(fault);
  if (text.starts_with(kSqlite)) {
    const SqlPlace place = SqlitePlace(std::string(text.substr(kSqlite.size())), use.readOnly, use.patienceMs);
    return std::make_unique<SqlRecordStore>(SqliteEngine(), place, use);
  }
  Conninfo conninfo = *ConninfoOf(text.substr(kPostgresql.size()));
  BoundWaiting(conninfo, use.patienceMs);
  return std::make_unique<SqlRecordStore>(PostgresqlEngine(), PostgresqlPlace(conninfo), use);
}

std::string SpoolFolderOf(std::string_view text, const std::string& fallback) {
  if (!text.starts_with(kSqlite)) return (fs::path(fallback) / "spool").string();
  return (fs::absolute(text.substr(kSqlite.size())).parent_path() / "spool").string();
}

}  // namespace orvane
