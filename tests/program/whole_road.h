#pragma once

#include <functional>
#include <string>
#include <vector>

#include "program/wired_bench.h"

namespace orvane::test {

// What is the same whichever route leads to the instruments.

/// The options that lead the station to a bench by some route.
using Route = std::function<Arguments(const WiredBench& bench)>;

/// Takes the unit of that seed through the whole road on the embedded bench and, by each route, on a wired bench of
/// its own: each run passes and leaves the same bytes in the handset's memory.
void ExpectTheRoadOfTheEmbeddedBench(const std::string& seed, const std::vector<Route>& routes);

/// `--initialize` found no instrument, and said so with this text behind "Instrument at address 1, route ".
void ExpectNoInstruments(const Child::End& end, const std::string& text);

/// Begins a run, and takes the bench's power away once a piece of the station's state has that value: the run ends
/// with a failure and without a verdict.
void ExpectRunEndsWithItsBench(Station& station, WiredBench& bench, const std::string& state, const Json& value);

/// Initializes everything and runs: the unit passes, each step complete.
void ExpectWholeRun(Station& station);

}  // namespace orvane::test
