#pragma once

#include "records/record.h"

namespace orvane::test {

/// A run with one of everything, small enough to be typed out: a level that is outside its limits, a search of two
/// passes, a box, and texts that a terminal, a spreadsheet and a page would take for their own.
[[nodiscard]] RunRecord SmallRun();

/// The same unit's complete PASS a day later, with nothing measured.
[[nodiscard]] RunRecord LaterPass();

/// As much as a whole road leaves, its numbers made up: each search walks to its target, the compensation is a line.
/// `number` makes another unit of it.
[[nodiscard]] RunRecord WholeRoad(int number);

}  // namespace orvane::test
