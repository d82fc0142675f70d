#pragma once

#include <string>
#include <string_view>

#include "state/reading.h"

namespace orvane {

/// "tx.gsm.level.5.power" as "GSM level 5, power": receiver and transmitter go without saying.
[[nodiscard]] std::string NameInWords(std::string_view name);

/// A reading and its limits in an operator's words: "GSM level 5, power: 31.2 dBm, limits 31.95 to 32.05".
[[nodiscard]] std::string LimitsText(const Reading& reading);

}  // namespace orvane
