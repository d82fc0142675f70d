#pragma once

#include <string>

#include "records/record.h"

namespace orvane {

/// All readings in tables, what belongs together in one row, each with a bar between its limits. Channels that were
/// filled in between measured ones stand in the plot alone, unless one is outside its limits.
[[nodiscard]] std::string ReadingTables(const RunRecord& record);

/// Codes over ARFCN and compensation over ARFCN, for each band that has some.
[[nodiscard]] std::string ChannelPlots(const RunRecord& record);

/// Each power search as it converged.
[[nodiscard]] std::string SearchPlots(const RunRecord& record);

}  // namespace orvane
