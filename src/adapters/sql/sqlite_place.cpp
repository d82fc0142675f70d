#include "adapters/sql/sqlite_place.h"

#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

namespace orvane {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const std::string& path, const std::string& words) {
  throw StoreFault("The store " + path + " " + words + ".");
}

/// What a name leads to, to be known again.
using Identity = std::optional<std::pair<dev_t, ino_t>>;
Identity IdentityOf(const std::string& path) {
  struct stat facts {};
  if (::stat(path.c_str(), &facts) != 0) return std::nullopt;
  return std::pair{facts.st_dev, facts.st_ino};
}

void Prepare(const std::string& path, bool readOnly) {
  struct stat facts {};
  if (::stat(path.c_str(), &facts) == 0) {
    if (!S_ISREG(facts.st_mode)) Fail(path, "is no regular file");
    return;
  }
  if (readOnly) Fail(path, "cannot be opened: " + std::generic_category().message(errno));
  std::error_code error;
  fs::create_directories(fs::path(path).parent_path(), error);
  if (error) Fail(path, "cannot be made: its folder: " + error.message());
}

}  // namespace

SqlPlace SqlitePlace(const std::string& path, bool readOnly, int patienceMs) {
  std::error_code error;
  // SQLite reads some names as something else; none of them is absolute.
  const std::string whole = fs::absolute(path, error).string();
  if (error) Fail(path, "cannot be found: " + error.message());
  const auto opened = std::make_shared<Identity>();
  return {whole,
          [whole, readOnly, patienceMs](QSqlDatabase& database) {
            database.setDatabaseName(QtText(whole));
            database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(patienceMs) +
                                       (readOnly ? QStringLiteral(";QSQLITE_OPEN_READONLY") : QString()));
          },
          [whole, readOnly, opened] {
            Prepare(whole, readOnly);
            *opened = std::nullopt;
          },
          [whole, opened] {
            // Looked at behind the opening, which may have made the file.
            const Identity now = IdentityOf(whole);
            if (!*opened) *opened = now;
            return !now || *opened != now;
          }};
}

}  // namespace orvane
