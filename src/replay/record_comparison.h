#pragma once

#include <string>
#include <vector>

#include "records/record.h"

namespace orvane {

/// What a run says of itself now that it did not say then, beside the times: readings, passes of searches, steps,
/// boxes, what it has made, and how it came to its end, a sentence each. Of a run whose station died nothing but its
/// trace was kept, and nothing is compared.
[[nodiscard]] std::vector<std::string> RecordDifferences(const RunRecord& then, const RunRecord& now);

}  // namespace orvane
