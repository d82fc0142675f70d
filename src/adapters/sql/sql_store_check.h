#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adapters/sql/sql_connection.h"

namespace orvane {

/// A sentence for each thing that is wrong with a run's rows and documents. @throws StoreFault.
[[nodiscard]] std::vector<std::string> CheckRun(SqlConnection& connection, std::string_view id);
/// The same for what belongs to no run that is there, and for the store itself. @throws StoreFault.
[[nodiscard]] std::vector<std::string> CheckAllOf(SqlConnection& connection);

}  // namespace orvane
