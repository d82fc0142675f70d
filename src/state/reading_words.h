#pragma once

#include <string>

#include "state/reading.h"

namespace orvane {

/// A reading and its limits in an operator's words: "GSM level 5, power: 31.2 dBm, limits 31.95 to 32.05".
[[nodiscard]] std::string LimitsText(const Reading& reading);

}  // namespace orvane
