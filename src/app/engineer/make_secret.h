#pragma once

#include <iosfwd>

namespace orvane {

/// Reads the engineer's word as a line from standard input and puts the line that a profile has of it on `out`. On a
/// terminal the word is asked for on `asks`, twice, and is not shown. @return the exit status
[[nodiscard]] int MakeEngineerSecret(std::ostream& out, std::ostream& asks);

}  // namespace orvane
