#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adapters/sql/sql_connection.h"
#include "records/record_store.h"

namespace orvane {

/// Newest first. @throws StoreFault.
[[nodiscard]] std::vector<RunSummary> ListRuns(SqlConnection& connection, const RunQuery& query);
/// Ids that begin so, at most `most` of them, in order. @throws StoreFault.
[[nodiscard]] std::vector<std::string> ListIds(SqlConnection& connection, std::string_view beginning,
                                               std::size_t most);

}  // namespace orvane
