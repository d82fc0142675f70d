#pragma once

#include <string>
#include <vector>

#include "records/record.h"

namespace orvane {

/// The readings of these runs, as RFC 4180 has it, UTF-8, with a header row: the columns of the store's table
/// `reading`, behind them serial, part, station, began and verdict of the run. Numbers are as they were read. A text
/// that a spreadsheet would take for a formula gets an apostrophe ahead, by which it stays a text there.
[[nodiscard]] std::string ReadingsCsv(const std::vector<RunRecord>& records);

}  // namespace orvane
