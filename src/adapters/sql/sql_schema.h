#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "adapters/sql/sql_connection.h"

namespace orvane {

/// What takes a store of the version before up by one: statements, in their order.
struct SchemaStep {
  std::vector<std::string_view> statements;
};
/// All steps, the first one from nothing at all: a store of version 1 has taken the first of them.
[[nodiscard]] std::span<const SchemaStep> SqliteSteps();
[[nodiscard]] std::span<const SchemaStep> PostgresqlSteps();

/// Takes a store up to the last step in one transaction; whoever does so at the same time is waited for.
/// @throws StoreFault for a store that is newer than the last step, or no store at all; it is as it was then.
void TakeUp(SqlConnection& connection, std::span<const SchemaStep> steps);

/// For a store that is only read. @throws StoreFault for one that is older or newer than the last step.
void RequireVersion(SqlConnection& connection, std::span<const SchemaStep> steps);

}  // namespace orvane
