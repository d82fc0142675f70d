#pragma once

#include <string>
#include <vector>

#include "records/record.h"

namespace orvane {

/// These runs as one page that needs nothing beside it: no script, no file, no network. Every text of a record is
/// escaped. Made for a screen, light or dark, and for paper, where each run begins on a sheet of its own.
[[nodiscard]] std::string HtmlReport(const std::vector<RunRecord>& records);

}  // namespace orvane
