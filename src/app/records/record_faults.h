#pragma once

#include <string>
#include <vector>

#include "records/record.h"

namespace orvane {

/// What does not hold together within a record, a line each: a reading of a step that is not there, passes that are
/// missing, a role that is there twice.
[[nodiscard]] std::vector<std::string> RecordFaults(const RunRecord& record);

}  // namespace orvane
