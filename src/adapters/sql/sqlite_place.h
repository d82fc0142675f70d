#pragma once

#include <string>

#include "adapters/sql/sql_connection.h"

namespace orvane {

/// A file of SQLite. Its folder is made, unless it is only read. A file that somebody took away or replaced is
/// noticed: what is written to one without a name is lost.
[[nodiscard]] SqlPlace SqlitePlace(const std::string& path, bool readOnly, int patienceMs);

}  // namespace orvane
