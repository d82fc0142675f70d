#pragma once

#include <string>
#include <vector>

#include "app/records/text_table.h"

namespace orvane {

/// One line a run below the titles, in the order in which they are given.
[[nodiscard]] std::string ListText(const std::vector<RunSummary>& runs, const Page& page);

/// A whole record for a person: verdict and reasons, identity, steps, readings, searches, boxes, documents.
[[nodiscard]] std::string ShowText(const RunRecord& record, const Page& page);

}  // namespace orvane
