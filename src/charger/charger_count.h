#pragma once

#include <string>
#include <string_view>

#include "base/numbers.h"
#include "base/text.h"

namespace orvane {

/// Value of a count as the boxes hold it, "0x0270": up to four hexadecimal digits from the third character on, as a
/// signed 16-bit number. Digits behind them are lost. @throws StationFailure when there are none.
[[nodiscard]] inline Integer CountOf(std::string_view text) {
  return ToInteger("&H" + std::string(Characters(text, 2, 4)));
}

}  // namespace orvane
