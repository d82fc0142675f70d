#pragma once

#include <optional>
#include <string>
#include <vector>

#include "workers.h"

namespace orvane::proofs {

/// What every proof's program is told: `--minutes N --state DIR [--jobs N]`, or one case alone, behind the
/// option that names it.
struct Arguments {
  Effort effort;
  std::optional<std::string> only;
};

/// @throws std::invalid_argument that says what is wrong.
[[nodiscard]] Arguments ArgumentsOf(const std::vector<std::string>& words, const std::string& onlyOption);

/// Shows one case's outcome. @return 0, or 1 when it has findings.
int ShowOne(const Outcome& outcome);

}  // namespace orvane::proofs
