#pragma once

#include "adapters/sql/sql_connection.h"
#include "records/record_store.h"

namespace orvane {

/// Takes runs that have an end, or their traces, out of a store, some at a time, so that nobody waits long. Contents
/// that nobody refers to any more go with them. @throws StoreFault: what was taken out by then stays out.
PruneResult PruneStore(SqlConnection& connection, const PruneOrder& order);

}  // namespace orvane
